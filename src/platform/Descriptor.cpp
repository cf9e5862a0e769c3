#include "platform/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tv::files {
namespace {

/// Makes a call of the system again for as long as signals interrupt it.
template<typename Call>
auto uninterrupted(Call call) noexcept {
    auto answer = call();
    while (answer == -1 && errno == EINTR) {
        answer = call();
    }
    return answer;
}

/// Calls `part` with what is left until nothing is. A part of no bytes would never come to an end.
template<typename Part>
bool writeParts(std::string_view bytes, Part part) noexcept {
    while (!bytes.empty()) {
        const ssize_t written = uninterrupted([&] { return part(bytes); });
        if (written <= 0) {
            errno = written == 0 ? EIO : errno;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

Descriptor::Descriptor(const std::filesystem::path& path, int flags) noexcept {
    constexpr mode_t everybody = 0666;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's call is one
    number_ = uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, everybody); });
}

Descriptor::~Descriptor() {
    static_cast<void>(close());
}

std::ptrdiff_t Descriptor::read(void* into, std::size_t size) const noexcept {
    return uninterrupted([&] { return ::read(number_, into, size); });
}

std::ptrdiff_t Descriptor::readAt(off_t place, void* into, std::size_t size) const noexcept {
    return uninterrupted([&] { return ::pread(number_, into, size, place); });
}

bool Descriptor::write(std::string_view bytes) const noexcept {
    return writeParts(bytes,
                      [this](std::string_view part) { return ::write(number_, part.data(), part.size()); });
}

bool Descriptor::writeAt(off_t place, std::string_view bytes) const noexcept {
    const off_t end = place + static_cast<off_t>(bytes.size());
    return writeParts(bytes, [this, end](std::string_view part) {
        return ::pwrite(number_, part.data(), part.size(), end - static_cast<off_t>(part.size()));
    });
}

std::intmax_t Descriptor::size() const noexcept {
    struct stat state {};
    return ::fstat(number_, &state) == 0 ? static_cast<std::intmax_t>(state.st_size) : -1;
}

bool Descriptor::resize(std::intmax_t size) const noexcept {
    return uninterrupted([&] { return ::ftruncate(number_, static_cast<off_t>(size)); }) == 0;
}

bool Descriptor::flush() const noexcept {
    return uninterrupted([&] { return ::fsync(number_); }) == 0;
}

bool Descriptor::close() noexcept {
    if (number_ == closed) {
        return true;
    }
    // An interrupted close has let go of the file all the same; a second one might hit somebody else's.
    return ::close(std::exchange(number_, closed)) == 0 || errno == EINTR;
}

} // namespace tv::files
