#include "Operations.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

constexpr int mostCalls = 3000; ///< No operation here makes more.

Ending runOnce(const Operation& operation, const fs::path& folder) {
    try {
        return operation.run(folder);
    } catch (const std::exception&) {
        return Ending::Told;
    }
}

std::string withoutFault(const Operation& operation) {
    const TemporaryFolder folder;
    operation.prepare(folder.path());
    const Ending ending = runOnce(operation, folder.path());
    return ending == Ending::Done ? operation.faultsLeft(folder.path(), ending) : "it does not go through";
}

/// One run in which the `which`-th call fails. The answer is the number of calls that failed.
int tryFault(const Operation& operation, Cause cause, int which, SystemFault::Reach reach) {
    const TemporaryFolder folder;
    operation.prepare(folder.path());
    const int filesBefore = openFiles();
    SystemFault fault(folder.path(), cause, which, reach, operation.otherFolder);
    const Ending ending = runOnce(operation, folder.path());
    const int failed = fault.end();
    EXPECT_NE(ending, Ending::Silent);
    EXPECT_TRUE(failed > 0 || ending == Ending::Done);
    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_EQ(operation.faultsLeft(folder.path(), ending), "");
    return failed;
}

int tryCause(const Operation& operation, Cause cause, SystemFault::Reach reach) {
    for (int which = 1; which < mostCalls; ++which) {
        SCOPED_TRACE(std::string(nameOf(cause)) +
                     (reach == SystemFault::Reach::One ? ", call " : ", calls from ") +
                     std::to_string(which));
        if (tryFault(operation, cause, which, reach) == 0) {
            return which - 1;
        }
        EXPECT_EQ(withoutFault(operation), "") << "behind the fault";
        if (testing::Test::HasFailure()) {
            return which;
        }
    }
    ADD_FAILURE() << "the operation has no end";
    return 0;
}

} // namespace

void tryAllFaults(const Operation& operation) {
    ASSERT_EQ(withoutFault(operation), "");
    int faults = 0;
    for (const Cause cause : causes) {
        for (const auto reach : {SystemFault::Reach::One, SystemFault::Reach::AllFromThere}) {
            if (cause != Cause::PartThenFull || reach == SystemFault::Reach::One) {
                faults += tryCause(operation, cause, reach);
            }
        }
    }
    EXPECT_GT(faults, 0);
    testing::Test::RecordProperty("faults", faults);
    std::cout << "faults: " << faults << '\n';
}

std::map<std::string, std::string> filesBelow(const fs::path& folder) {
    std::map<std::string, std::string> found;
    for (const auto& item : fs::recursive_directory_iterator(folder)) {
        if (item.is_regular_file() && item.path().extension() != ".TMP") {
            found[item.path().lexically_relative(folder).string()] = files::readAll(item.path());
        }
    }
    return found;
}

std::string bytesOf(const fs::path& file) {
    return fs::exists(file) ? files::readAll(file) : nothing;
}

std::string notOneOf(const fs::path& file, const std::vector<std::string>& texts) {
    const std::string bytes = bytesOf(file);
    const bool isOne = std::find(texts.begin(), texts.end(), bytes) != texts.end();
    return isOne ? std::string() : file.filename().string() + ": " + bytes;
}

namespace {

/// Thousands of files that are flushed to the disk: memory is quicker.
class FoldersInMemory : public testing::Environment {
    void SetUp() override {
        if (fs::exists("/dev/shm")) {
            ::setenv("TMPDIR", "/dev/shm", 1); // NOLINT(concurrency-mt-unsafe): no thread runs yet
        }
    }
};
[[maybe_unused]] const auto* const foldersInMemory = testing::AddGlobalTestEnvironment(new FoldersInMemory);

} // namespace

WatchedLog::WatchedLog()
    : logger_(startLogger(folder_, clsLogger::typeTXT, library::level::all)) {}

int WatchedLog::newFailures() {
    const std::string log = files::readAll(oLogger->getFilename());
    const int all = static_cast<int>(occurrences(log, " - FATAL  ") - occurrences(log, " -> [[0]]"));
    return all - std::exchange(seen_, all);
}

} // namespace tv::test
