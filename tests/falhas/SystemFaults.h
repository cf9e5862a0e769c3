#pragma once

#include <filesystem>
#include <ostream>
#include <string_view>

/// Lets calls of the operating system fail. The test program has the system's file functions itself, in front
/// of those of the C library, for everything that runs in the process.
namespace tv::test {

/// Why calls fail.
enum class Cause {
    NoSpace,      ///< ENOSPC where something is made or written.
    NoPermission, ///< EACCES where a path is looked up.
    Vanished,     ///< ENOENT where a path is looked up.
    Interrupted,  ///< EINTR where a call may wait.
    BrokenDisk,   ///< EIO where bytes are moved.
    InParts,      ///< Half of the bytes are read or written, which is no failure.
    PartThenFull, ///< Half of the bytes are written, and ENOSPC for what comes next.
};
inline constexpr Cause causes[] = {Cause::NoSpace,     Cause::NoPermission, Cause::Vanished,
                                   Cause::Interrupted, Cause::BrokenDisk,   Cause::InParts,
                                   Cause::PartThenFull};
std::string_view nameOf(Cause cause) noexcept;
inline void PrintTo(Cause cause, std::ostream* out) {
    *out << nameOf(cause);
}

/// For its life, a call fails that has to do with files in one of two folders. There is one at a time; any
/// thread may meet it.
class SystemFault {
public:
    enum class Reach { One, AllFromThere };

    /// Of the calls that the cause can hit, the `which`-th fails, counted from 1, and with `AllFromThere`
    /// those behind it. An interruption never hits the same operation for ever: of a row of calls only every
    /// other one.
    SystemFault(std::filesystem::path folder, Cause cause, int which, Reach reach,
                std::filesystem::path otherFolder = {});
    ~SystemFault();
    SystemFault(const SystemFault&) = delete;
    SystemFault& operator=(const SystemFault&) = delete;

    /// Stops the failing; the answer is the number of calls that failed.
    int end() noexcept;
};

/// Number of files that the process has open.
int openFiles();

} // namespace tv::test
