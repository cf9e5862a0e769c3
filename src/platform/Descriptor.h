#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace tv::files {

/// An open file of the operating system. What a signal interrupts is done again, what is written in part is
/// written to its end; any other failure is told by the answer, with the reason in `errno`.
class Descriptor {
public:
    /// Opens the file; `flags` are those of the system's `open`. A new file may be read and written by
    /// everybody whom the process allows it.
    Descriptor(const std::filesystem::path& path, int flags) noexcept;
    Descriptor(Descriptor&& other) noexcept
        : number_(std::exchange(other.number_, closed)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    explicit operator bool() const noexcept { return number_ != closed; }

    /// Up to `size` bytes from where the last read ended; 0 at the end of the file, -1 on a failure.
    std::ptrdiff_t read(void* into, std::size_t size) const noexcept;
    /// The same from a place of the file.
    std::ptrdiff_t readAt(off_t place, void* into, std::size_t size) const noexcept;
    /// Writes all bytes where the last write ended, or at the file's end if it was opened so.
    bool write(std::string_view bytes) const noexcept;
    /// Writes all bytes to a place of the file.
    bool writeAt(off_t place, std::string_view bytes) const noexcept;
    /// Bytes of the file, or -1 on a failure.
    std::intmax_t size() const noexcept;
    /// Makes the file so long.
    bool resize(std::intmax_t size) const noexcept;
    /// Waits until what was written is on the disk.
    bool flush() const noexcept;
    /// Closes the file now, since some file systems tell of a failed write only here.
    bool close() noexcept;

private:
    static constexpr int closed = -1;
    int number_;
};

} // namespace tv::files
