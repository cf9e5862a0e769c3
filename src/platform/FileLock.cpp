#include "platform/FileLock.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tv {

FileLock::FileLock(int handle, std::filesystem::path path) noexcept
    : handle_(handle)
    , path_(std::move(path)) {}

FileLock::FileLock(FileLock&& other) noexcept
    : handle_(std::exchange(other.handle_, -1))
    , path_(std::move(other.path_)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        release();
        handle_ = std::exchange(other.handle_, -1);
        path_ = std::move(other.path_);
    }
    return *this;
}

FileLock::~FileLock() {
    release();
}

std::optional<FileLock> FileLock::take(const std::filesystem::path& path) {
    files::append(path, {}); // tells in the house's words what keeps the file from being made
    FileLock lock(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666), path);
    if (lock.handle_ < 0) {
        throw Error(errc::pathError, "FileLock", "Erro de acesso ao arquivo: " + files::toText(path));
    }
    int taken = 0;
    do {
        taken = ::flock(lock.handle_, LOCK_EX | LOCK_NB);
    } while (taken != 0 && errno == EINTR);
    // Whoever held it before may have taken the file away meanwhile: then this is no lock on anything.
    if (taken != 0 || !lock.isStillThere()) {
        return std::nullopt;
    }
    return lock;
}

bool FileLock::isStillThere() const noexcept {
    struct stat held {};
    struct stat named {};
    return ::fstat(handle_, &held) == 0 && ::stat(path_.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

void FileLock::remove() noexcept {
    if (handle_ >= 0) {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
        release();
    }
}

void FileLock::release() noexcept {
    if (handle_ >= 0) {
        static_cast<void>(::close(handle_));
        handle_ = -1;
    }
}

} // namespace tv
