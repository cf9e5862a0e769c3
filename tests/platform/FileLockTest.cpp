#include "platform/FileLock.h"

#include "platform/Error.h"
#include "platform/ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace tv {
namespace {

using test::ScratchFolder;

TEST(FileLock, OneHoldsItAtATime) {
    const ScratchFolder folder;
    std::optional<FileLock> first = FileLock::take(folder / "a.lock");
    ASSERT_TRUE(first);
    EXPECT_FALSE(FileLock::take(folder / "a.lock"));
    EXPECT_TRUE(FileLock::take(folder / "b.lock"));
    first.reset();
    EXPECT_TRUE(FileLock::take(folder / "a.lock")) << "its file stays and can be locked again";
}

TEST(FileLock, RemovingTakesTheFileAway) {
    const ScratchFolder folder;
    std::optional<FileLock> lock = FileLock::take(folder / "a.lock");
    ASSERT_TRUE(lock);
    lock->remove();
    EXPECT_EQ(folder.count(), 0U);
    lock->remove();
    EXPECT_TRUE(FileLock::take(folder / "a.lock"));
}

TEST(FileLock, MovingHandsItOver) {
    const ScratchFolder folder;
    std::optional<FileLock> first = FileLock::take(folder / "a.lock");
    ASSERT_TRUE(first);
    FileLock other = std::move(*first);
    first.reset();
    EXPECT_FALSE(FileLock::take(folder / "a.lock"));
    std::optional<FileLock> third = FileLock::take(folder / "b.lock");
    ASSERT_TRUE(third);
    other = std::move(*third);
    EXPECT_TRUE(FileLock::take(folder / "a.lock"));
    EXPECT_FALSE(FileLock::take(folder / "b.lock"));
}

TEST(FileLock, AFileThatIsNotThereAnyMoreIsNoLock) {
    const ScratchFolder folder;
    const std::optional<FileLock> gone = FileLock::take(folder / "a.lock");
    std::filesystem::remove(folder / "a.lock");
    EXPECT_TRUE(FileLock::take(folder / "a.lock")) << "another file of the same name";
}

TEST(FileLock, AMissingFolderIsToldAsSuch) {
    const ScratchFolder folder;
    try {
        FileLock::take(folder / "nenhuma" / "a.lock");
        FAIL() << "there is no such folder";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.number(), errc::pathNotFound);
    }
}

TEST(FileLock, AKilledProcessHoldsNothing) {
    const ScratchFolder folder;
    int ready[2]; // NOLINT(cppcoreguidelines-avoid-c-arrays): what the system's call takes
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const std::optional<FileLock> lock = FileLock::take(folder / "a.lock");
        const char sign = lock ? 'y' : 'n';
        static_cast<void>(!::write(ready[1], &sign, 1));
        ::pause();
        ::_exit(1);
    }
    char sign = '?';
    ASSERT_EQ(::read(ready[0], &sign, 1), 1);
    EXPECT_EQ(sign, 'y');
    EXPECT_FALSE(FileLock::take(folder / "a.lock"));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(FileLock::take(folder / "a.lock"));
    ::close(ready[0]);
    ::close(ready[1]);
}

} // namespace
} // namespace tv
