#include "SystemFaults.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

// The parser's library loses some hundred bytes of its own with a document whose reading breaks off.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the sanitizer asks for it by this
// name
extern "C" const char* __lsan_default_suppressions();
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" const char* __lsan_default_suppressions() {
    return "leak:xercesc_3_2::MemoryManagerImpl::allocate\n";
}

namespace tv::test {
namespace {

/// Kinds of calls, as bits.
enum Kind : unsigned {
    opening = 1U,
    making = 2U,
    reading = 4U,
    writing = 8U,
    closing = 16U,
    syncing = 32U,
    cutting = 64U,
    asking = 128U,
    naming = 256U,
    removing = 512U,
    permitting = 1024U,
    listing = 2048U,
};

constexpr unsigned onPaths = opening | making | asking | naming | removing | permitting | listing;

unsigned hits(Cause cause) {
    switch (cause) {
    case Cause::NoSpace:
        return making | writing | syncing | closing | naming;
    case Cause::NoPermission:
    case Cause::Vanished:
        return onPaths;
    case Cause::Interrupted:
        return opening | making | reading | writing | closing | syncing | cutting;
    case Cause::BrokenDisk:
        return reading | writing | syncing | closing | cutting;
    case Cause::InParts:
        return reading | writing;
    case Cause::PartThenFull:
        return writing;
    }
    return 0;
}

int errorOf(Cause cause) {
    switch (cause) {
    case Cause::NoPermission:
        return EACCES;
    case Cause::Vanished:
        return ENOENT;
    case Cause::Interrupted:
        return EINTR;
    case Cause::BrokenDisk:
        return EIO;
    default:
        return ENOSPC;
    }
}

constexpr std::size_t mostFiles = 4096;
constexpr std::size_t longestPath = 512;

/// Plain memory that needs no start: the calls come before the program's own start, too.
struct State {
    std::atomic<bool> armed;
    Cause cause;
    bool fromThereOn;
    std::atomic<int> left;   ///< Calls until the one that fails.
    std::atomic<int> failed; ///< Calls that failed.
    std::atomic<bool> pause; ///< The call before was interrupted, so this one is not.
    std::array<std::array<char, longestPath>, 2> folders;
    std::array<std::atomic<bool>, mostFiles> isOurs; ///< By descriptor: opened below one of the folders.
};
State state; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

bool isBelow(const char* path) {
    return path != nullptr &&
           std::any_of(state.folders.begin(), state.folders.end(), [&](const auto& folder) {
               return folder[0] != '\0' && std::strncmp(path, folder.data(), std::strlen(folder.data())) == 0;
           });
}

bool isOurs(int file) {
    return file >= 0 && static_cast<std::size_t>(file) < mostFiles &&
           state.isOurs.at(static_cast<std::size_t>(file));
}

void note(int file, bool ours) {
    if (file >= 0 && static_cast<std::size_t>(file) < mostFiles) {
        state.isOurs.at(static_cast<std::size_t>(file)) = ours;
    }
}

/// Counts a call of that kind; true when it is to fail, with the reason in `errno`.
bool fails(Kind kind) {
    if (!state.armed || (hits(state.cause) & kind) == 0) {
        return false;
    }
    if (state.cause == Cause::Interrupted && state.pause.exchange(false)) {
        return false;
    }
    const int left = --state.left;
    if (left > 0 || (left < 0 && !state.fromThereOn)) {
        return false;
    }
    ++state.failed;
    state.pause = state.cause == Cause::Interrupted;
    errno = errorOf(state.cause);
    return true;
}

bool failsAt(Kind kind, const char* path) {
    return state.armed && isBelow(path) && fails(kind);
}

bool failsFor(Kind kind, int file) {
    return state.armed && isOurs(file) && fails(kind);
}

/// What becomes of a call that moves bytes: 0 when it fails, otherwise the bytes that it may move.
std::size_t allowed(Kind kind, int file, std::size_t size) {
    if (size == 0 || !state.armed || !isOurs(file)) {
        return size;
    }
    if (state.cause == Cause::PartThenFull && kind == writing && state.left <= 0 && state.failed == 1) {
        ++state.failed;
        errno = ENOSPC;
        return 0;
    }
    if (!fails(kind)) {
        return size;
    }
    if (state.cause == Cause::InParts || state.cause == Cause::PartThenFull) {
        return (size + 1) / 2;
    }
    return 0;
}

template<typename Function>
Function next(const char* name) {
    Function found = nullptr;
    void* const symbol = dlsym(RTLD_NEXT, name);
    std::memcpy(&found, &symbol, sizeof found);
    return found;
}

mode_t modeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

Kind openingKind(int flags) {
    return (flags & O_CREAT) != 0 ? making : (flags & O_DIRECTORY) != 0 ? listing : opening;
}

} // namespace

std::string_view nameOf(Cause cause) noexcept {
    switch (cause) {
    case Cause::NoSpace:
        return "NoSpace";
    case Cause::NoPermission:
        return "NoPermission";
    case Cause::Vanished:
        return "Vanished";
    case Cause::Interrupted:
        return "Interrupted";
    case Cause::BrokenDisk:
        return "BrokenDisk";
    case Cause::InParts:
        return "InParts";
    case Cause::PartThenFull:
        return "PartThenFull";
    }
    return "?";
}

SystemFault::SystemFault(std::filesystem::path folder, Cause cause, int which, Reach reach,
                         std::filesystem::path otherFolder) {
    const std::array<std::string, 2> folders{folder.string(), otherFolder.string()};
    for (std::size_t i = 0; i < folders.size(); ++i) {
        state.folders.at(i).fill('\0');
        folders.at(i).copy(state.folders.at(i).data(), longestPath - 1);
    }
    state.cause = cause;
    state.fromThereOn = reach == Reach::AllFromThere;
    state.left = which;
    state.failed = 0;
    state.pause = false;
    state.armed = true;
}

SystemFault::~SystemFault() {
    end();
}

int SystemFault::end() noexcept {
    state.armed = false;
    return state.failed;
}

int openFiles() {
    int count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count - 1; // the folder's own
}

} // namespace tv::test

// The system's functions. Each asks whether it is to fail and leaves the work to the next one of its name.
// NOLINTBEGIN(cert-dcl50-cpp,readability-inconsistent-declaration-parameter-name,cppcoreguidelines-pro-type-vararg)

using namespace tv::test; // NOLINT(google-build-using-namespace)

extern "C" {

int open(const char* path, int flags, ...) {
    static const auto real = next<int (*)(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (failsAt(openingKind(flags), path)) {
        return -1;
    }
    const int file = real(path, flags, mode);
    note(file, isBelow(path));
    return file;
}

int openat(int folder, const char* path, int flags, ...) {
    static const auto real = next<int (*)(int, const char*, int, ...)>("openat");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (failsAt(openingKind(flags), path)) {
        return -1;
    }
    const int file = real(folder, path, flags, mode);
    note(file, isBelow(path));
    return file;
}

int close(int file) {
    static const auto real = next<int (*)(int)>("close");
    const bool failing = failsFor(closing, file);
    const int reason = errno;
    note(file, false);
    const int answer = real(file); // whatever it tells, the file is closed
    if (failing) {
        errno = reason;
        return -1;
    }
    return answer;
}

ssize_t read(int file, void* into, size_t size) {
    static const auto real = next<ssize_t (*)(int, void*, size_t)>("read");
    const std::size_t share = allowed(reading, file, size);
    return share == 0 && size > 0 ? -1 : real(file, into, share);
}

ssize_t pread(int file, void* into, size_t size, off_t place) {
    static const auto real = next<ssize_t (*)(int, void*, size_t, off_t)>("pread");
    const std::size_t share = allowed(reading, file, size);
    return share == 0 && size > 0 ? -1 : real(file, into, share, place);
}

ssize_t write(int file, const void* bytes, size_t size) {
    static const auto real = next<ssize_t (*)(int, const void*, size_t)>("write");
    const std::size_t share = allowed(writing, file, size);
    return share == 0 && size > 0 ? -1 : real(file, bytes, share);
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t place) {
    static const auto real = next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    const std::size_t share = allowed(writing, file, size);
    return share == 0 && size > 0 ? -1 : real(file, bytes, share, place);
}

ssize_t sendfile(int to, int from, off_t* place, size_t size) noexcept {
    static const auto real = next<ssize_t (*)(int, int, off_t*, size_t)>("sendfile");
    const std::size_t share = allowed(writing, to, size);
    return share == 0 && size > 0 ? -1 : real(to, from, place, share);
}

int fsync(int file) {
    static const auto real = next<int (*)(int)>("fsync");
    return failsFor(syncing, file) ? -1 : real(file);
}

int ftruncate(int file, off_t size) noexcept {
    static const auto real = next<int (*)(int, off_t)>("ftruncate");
    return failsFor(cutting, file) ? -1 : real(file, size);
}

int stat(const char* path, struct stat* into) noexcept {
    static const auto real = next<int (*)(const char*, struct stat*)>("stat");
    return failsAt(asking, path) ? -1 : real(path, into);
}

int lstat(const char* path, struct stat* into) noexcept {
    static const auto real = next<int (*)(const char*, struct stat*)>("lstat");
    return failsAt(asking, path) ? -1 : real(path, into);
}

char* realpath(const char* path, char* into) noexcept {
    static const auto real = next<char* (*)(const char*, char*)>("realpath");
    return failsAt(asking, path) ? nullptr : real(path, into);
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<int (*)(const char*, const char*)>("rename");
    return failsAt(naming, to) ? -1 : real(from, to);
}

int link(const char* from, const char* to) noexcept {
    static const auto real = next<int (*)(const char*, const char*)>("link");
    return failsAt(naming, to) ? -1 : real(from, to);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto real = next<int (*)(const char*, mode_t)>("mkdir");
    return failsAt(naming, path) ? -1 : real(path, mode);
}

int remove(const char* path) noexcept {
    static const auto real = next<int (*)(const char*)>("remove");
    return failsAt(removing, path) ? -1 : real(path);
}

int unlink(const char* path) noexcept {
    static const auto real = next<int (*)(const char*)>("unlink");
    return failsAt(removing, path) ? -1 : real(path);
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
    static const auto real = next<int (*)(int, const char*, mode_t, int)>("fchmodat");
    return failsAt(permitting, path) ? -1 : real(folder, path, mode, flags);
}

struct dirent* readdir(DIR* folder) {
    static const auto real = next<dirent* (*)(DIR*)>("readdir");
    return failsFor(listing, dirfd(folder)) ? nullptr : real(folder);
}

} // extern "C"

// NOLINTEND(cert-dcl50-cpp,readability-inconsistent-declaration-parameter-name,cppcoreguidelines-pro-type-vararg)
