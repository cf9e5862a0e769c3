#pragma once

#include "logging/ILoggerStream.h"
#include "logging/clsStack.h"
#include "logging/library.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

/// Records which routines ran and what went wrong, in one file a day. Logging never stops the system: no
/// failure of it reaches a caller.
///
/// The level is no threshold of severity: an entry of grade n is written when the level is n or higher, and
/// FATAL has the highest grade. So FATAL entries are written at levels FATAL and ALL only.
class clsLogger {
public:
    /// Kinds of stream for loggerFactory.
    static constexpr std::int16_t typeXML = 0;
    static constexpr std::int16_t typeTXT = 1;

    clsLogger();
    ~clsLogger();
    clsLogger(const clsLogger&) = delete;
    clsLogger& operator=(const clsLogger&) = delete;

    /// The running routines.
    clsStack callStack;

    /// Makes the stream, sets the level and begins a run. False, with no stream, for an unknown type.
    bool loggerFactory(std::int16_t type, std::int16_t level);
    /// Ends the run: the call stack is emptied and the closing banner written.
    void destroy() noexcept;

    /// One entry in the routine on top of the call stack; with nothing on the stack it is lost.
    void logINFO(std::string_view description) noexcept { logAt(library::level::info, description); }
    void logWARN(std::string_view description) noexcept { logAt(library::level::warn, description); }
    void logFATAL(std::string_view description) noexcept { logAt(library::level::fatal, description); }

    /// Full name of the log file. It is fixed by the first call, so that a run which passes midnight stays in
    /// its file; that call writes the header when the file is new and the level is above OFF, and where that
    /// fails the next one does.
    const std::string& getFilename() noexcept;

    /// True when `getFilename` found the log file there, or has made it.
    bool hasFile() const noexcept { return hasFile_; }

    std::int16_t getLevel() const noexcept { return level_; }
    void setLevel(std::int16_t level) noexcept { level_ = level; }
    /// Folder of the log file.
    void setPath(std::string path) { path_ = std::move(path); }

    /// Title and version in the log's header. Where none was given, reading them takes the program's own.
    const std::string& appTitle();
    void appTitle(std::string title) { appTitle_ = std::move(title); }
    const std::string& appVersion();
    void appVersion(std::string version) { appVersion_ = std::move(version); }

    /// The stream, or null before loggerFactory made one.
    ILoggerStream* getStream() const noexcept { return stream_.get(); }

private:
    void logAt(std::int16_t grade, std::string_view description) noexcept;
    std::string todaysFile() const;

    std::string appTitle_;
    std::string appVersion_;
    std::int16_t level_ = library::level::off;
    std::unique_ptr<ILoggerStream> stream_;
    std::string path_;
    std::string filename_;
    bool hasFile_ = false;
};

/// The one logger of the program, or empty before the catalog made it. The catalog shares it.
inline std::shared_ptr<clsLogger> oLogger;

} // namespace tv
