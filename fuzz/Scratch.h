#pragma once

#include "platform/Files.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace fuzz {

/// A folder of this process for the files that a target reads and writes, gone at the end of a good run.
class Scratch {
public:
    Scratch()
        : path_(std::filesystem::temp_directory_path() / ("tv-fuzz-" + std::to_string(::getpid()))) {
        clear();
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// Leaves the folder without files.
    void clear() const {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    const std::filesystem::path& path() const noexcept { return path_; }
    std::string text() const { return tv::files::toText(path_); }
    /// Writes a file below the folder and gives its path.
    std::filesystem::path write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        tv::files::writeAll(file, bytes);
        return file;
    }

private:
    std::filesystem::path path_;
};

} // namespace fuzz
