#pragma once

#include <string>
#include <string_view>

namespace tv {

class clsLogger;

/// Writes a logger's entries to its log file in one format. Each operation opens the file, writes and closes
/// it, so that an entry stands on the disk when the call returns. A failure to write loses the entry and
/// reaches nobody.
class ILoggerStream {
public:
    virtual ~ILoggerStream() = default;

    /// A run begins.
    virtual void startLogging() = 0;
    /// A run ends: pops what is left on the call stack, then writes the run's end.
    virtual void finishLogging() = 0;
    /// A name was pushed on the call stack.
    virtual void logPUSH() = 0;
    /// The top name is about to be popped.
    virtual void logPOP() = 0;
    /// One entry in the routine on top of the call stack. `level` is one of library::levelNames.
    virtual void log(std::string_view level, std::string_view description) = 0;
    /// Writes the header of a new file; a file that is there stays as it is.
    virtual void openFile(const std::string& filename, std::string_view title, std::string_view version) = 0;
    /// Nothing is held open, so there is nothing to close.
    virtual void closeFile(const std::string& filename) = 0;
    /// Extension of the log file, without a point.
    virtual std::string getFileExtension() const = 0;
    /// The logger whose entries the stream writes. It must outlive the stream.
    virtual void setLogger(clsLogger* logger) = 0;
};

} // namespace tv
