#include "platform/Folders.h"
#include "platform/Checksum.h"
#include "platform/Error.h"
#include "platform/FileTurn.h"
#include "platform/ScratchFolder.h"
#include "platform/UserFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tv {
namespace {

using test::ScratchFolder;
namespace fs = std::filesystem;

/// A variable of the environment as a test wants it, and as it was afterwards.
class Variable {
public:
    Variable(const char* name, const std::optional<std::string>& value)
        : name_(name) {
        if (const char* was = std::getenv(name); was != nullptr) {
            before_ = was;
        }
        set(value);
    }
    ~Variable() { set(before_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const std::optional<std::string>& value) const {
        if (value) {
            ::setenv(name_, value->c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }
    const char* name_;
    std::optional<std::string> before_;
};

std::int32_t numberOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& failure) {
        return failure.number();
    }
    return 0;
}

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions()) & 0777U;
}

/// Runs `action` as somebody to whom other people's files are closed, in a process of its own when this one
/// is root's; gives whether it held.
bool asOrdinaryUser(const std::function<bool()>& action) {
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0) {
        return action();
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const bool changed = ::setresuid(nobody, nobody, nobody) == 0;
        ::_exit(changed && action() ? 0 : 1);
    }
    int how = 0;
    ::waitpid(child, &how, 0);
    return WIFEXITED(how) && WEXITSTATUS(how) == 0;
}

TEST(ChecksumTest, IsTheOneThatOtherToolsWrite) {
    EXPECT_EQ(checksum::sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(checksum::sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_NE(checksum::sha256(std::string_view("a\0b", 3)), checksum::sha256("a"));
}

TEST(FoldersTest, MissingFoldersAreMadeForTheirUserAlone) {
    const ScratchFolder folder;
    files::createFolder(folder / "a/b/c");
    for (const char* name : {"a", "a/b", "a/b/c"}) {
        EXPECT_EQ(modeOf(folder / name), 0700U) << name;
    }
    fs::permissions(folder / "a", fs::perms(0755));
    files::createFolder(folder / "a");
    EXPECT_EQ(modeOf(folder / "a"), 0755U);
}

TEST(FoldersTest, WhatIsInAFoldersPlaceIsAnError) {
    const ScratchFolder folder;
    folder.file("a", "x");
    EXPECT_EQ(numberOf([&] { files::createFolder(folder / "a"); }), errc::fileExists);
    EXPECT_EQ(numberOf([&] { files::createFolder(folder / "a/b"); }), errc::pathNotFound);
}

TEST(FoldersTest, WritableIsAFolderThatTakesFiles) {
    const ScratchFolder folder;
    EXPECT_TRUE(files::isWritableFolder(folder.path()));
    EXPECT_FALSE(files::isWritableFolder(folder / "none"));
    EXPECT_FALSE(files::isWritableFolder(folder.file("a", "x")));
    fs::create_directory(folder / "closed");
    fs::permissions(folder / "closed", fs::perms(0555));
    EXPECT_TRUE(asOrdinaryUser([&] { return !files::isWritableFolder(folder / "closed"); }));
}

TEST(FoldersTest, AMoveTakesThePlaceOfAFile) {
    const ScratchFolder folder;
    folder.file("old", "1");
    files::moveOver(folder.file("new", "2"), folder / "old");
    EXPECT_EQ(files::readAll(folder / "old"), "2");
    EXPECT_FALSE(files::exists(folder / "new"));
    EXPECT_EQ(numberOf([&] { files::moveOver(folder / "old", folder / "none/x"); }), errc::pathNotFound);
    EXPECT_EQ(files::readAll(folder / "old"), "2");
}

TEST(UserFoldersTest, EnvironmentNamesTheUsersData) {
    const Variable home("HOME", "/casa/ana");
    {
        const Variable data("XDG_DATA_HOME", "/dados/ana");
        EXPECT_EQ(userfolders::data(), "/dados/ana");
    }
    for (const char* none : {"", "dados", "./dados"}) {
        const Variable data("XDG_DATA_HOME", none);
        EXPECT_EQ(userfolders::data(), "/casa/ana/.local/share") << none;
    }
    const Variable data("XDG_DATA_HOME", std::nullopt);
    EXPECT_EQ(userfolders::data(), "/casa/ana/.local/share");
}

TEST(UserFoldersTest, TheSystemKnowsTheHomeOfAUserWithoutEnvironment) {
    const Variable data("XDG_DATA_HOME", std::nullopt);
    const Variable home("HOME", std::nullopt);
    const fs::path folder = userfolders::data();
    EXPECT_TRUE(folder.empty() || (folder.is_absolute() && folder.string().ends_with("/.local/share")));
}

TEST(FileTurnTest, TheSecondWaitsForTheFirst) {
    const ScratchFolder folder;
    const fs::path file = folder / "lock";
    std::optional<FileTurn> first(file);
    bool afterwards = false;
    std::thread waiting([&] {
        const FileTurn second(file);
        afterwards = files::exists(folder / "given back");
    });
    folder.file("given back", "");
    first.reset();
    waiting.join();
    EXPECT_TRUE(afterwards);
}

TEST(FileTurnTest, AFolderThatIsNotThereHasNoLock) {
    const ScratchFolder folder;
    EXPECT_EQ(numberOf([&] { const FileTurn turn(folder / "none/lock"); }), errc::pathNotFound);
}

} // namespace
} // namespace tv
