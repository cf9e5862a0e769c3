#pragma once

#include "logging/clsLogger.h"
#include "platform/Files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tv::test {

/// An empty folder of its own that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device seed;
        path_ = std::filesystem::temp_directory_path() /
                ("tv-" + std::to_string(seed()) + "-" + std::to_string(seed()));
        std::filesystem::create_directory(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string text() const { return path_.string(); }
    std::filesystem::path write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }
    /// Bytes of a file, or the empty text when it is not there.
    std::string read(std::string_view name) const {
        return holds(name) ? files::readAll(path_ / name) : std::string();
    }
    bool holds(std::string_view name) const { return std::filesystem::exists(path_ / name); }
    std::size_t countFiles() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path path_;
};

/// A started logger that writes to `folder`.
inline std::shared_ptr<clsLogger> startLogger(const TemporaryFolder& folder, std::int16_t type,
                                              std::int16_t level) {
    auto logger = std::make_shared<clsLogger>();
    logger->appTitle("Boletos de Teste");
    logger->appVersion("2.1");
    logger->setPath(folder.text());
    logger->loggerFactory(type, level);
    return logger;
}

/// Makes a logger the global one for the life of the object.
class GlobalLogger {
public:
    explicit GlobalLogger(std::shared_ptr<clsLogger> logger)
        : before_(std::exchange(oLogger, std::move(logger))) {}
    ~GlobalLogger() { oLogger = std::move(before_); }
    GlobalLogger(const GlobalLogger&) = delete;
    GlobalLogger& operator=(const GlobalLogger&) = delete;

private:
    std::shared_ptr<clsLogger> before_;
};

/// Lines of a text, their ends cut off.
inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::size_t start = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
        result.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return result;
}

/// How often `what` occurs in `text`.
inline std::size_t occurrences(const std::string& text, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) {
        ++count;
    }
    return count;
}

} // namespace tv::test
