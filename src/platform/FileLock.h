#pragma once

#include <filesystem>
#include <optional>

namespace tv {

/// A file that one process at a time holds. The system lets it go when the process ends, however it ends, so
/// a lock that can be taken belongs to nobody who lives.
class FileLock {
public:
    /// Takes the lock, making its file where there is none. Nothing when another process, or another lock of
    /// this one, holds it. Throws Error as files::append.
    static std::optional<FileLock> take(const std::filesystem::path& path);

    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    /// Lets the lock go; its file stays.
    ~FileLock();

    /// Lets the lock go and takes its file away.
    void remove() noexcept;

private:
    FileLock(int handle, std::filesystem::path path) noexcept;
    bool isStillThere() const noexcept;
    void release() noexcept;

    int handle_ = -1;
    std::filesystem::path path_;
};

} // namespace tv
