#pragma once

#include "platform/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace tv::test {

/// A folder of its own for one test, gone afterwards.
class ScratchFolder {
public:
    ScratchFolder() {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string(info->test_suite_name()) + "." + info->name();
        for (char& c : name) {
            c = c == '/' ? '_' : c;
        }
        path_ = std::filesystem::temp_directory_path() / ("tv-" + name + "-" + std::to_string(::getpid()));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
    /// Writes a file of the folder and gives its path.
    std::filesystem::path file(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path path = path_ / name;
        files::writeAll(path, bytes);
        return path;
    }
    /// Names of what lies in the folder.
    std::size_t count() const {
        std::size_t entries = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path_)) {
            ++entries;
        }
        return entries;
    }

private:
    std::filesystem::path path_;
};

} // namespace tv::test
