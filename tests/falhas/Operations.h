#pragma once

#include "SystemFaults.h"

#include "logging/LogFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace tv::test {

/// How an operation ended, as its user sees it.
enum class Ending {
    Done,   ///< It says that it went through.
    Told,   ///< It failed and said so: an exception, an answer, a message or a line in the log.
    Silent, ///< It failed, and nobody was told.
};

/// Something that a user has done to files, and what must hold behind it whatever happens to the files
/// meanwhile.
struct Operation {
    /// Puts the files there that it begins with.
    std::function<void(const std::filesystem::path& folder)> prepare;
    /// Does it. What it throws counts as told.
    std::function<Ending(const std::filesystem::path& folder)> run;
    /// What is wrong with the files behind it; empty when nothing is.
    std::function<std::string(const std::filesystem::path& folder, Ending ending)> faultsLeft;
    /// A second folder whose files may fail, for instance on another disk.
    std::filesystem::path otherFolder = {};
};

/// Lets each call of the system that the operation makes fail in turn, for each cause, alone and with all
/// behind it, until the operation meets no failure any more. Behind each one: nothing is wrong with the
/// files, whoever waits for the operation was told, no file is left open, and the same operation goes through
/// without a fault.
void tryAllFaults(const Operation& operation);

/// Files below a folder by name, with their bytes; temporary ones (*.TMP) are left out.
std::map<std::string, std::string> filesBelow(const std::filesystem::path& folder);

/// The bytes of a file, or `nothing` where there is none.
std::string bytesOf(const std::filesystem::path& file);
inline const std::string nothing = "(no file)";

/// Empty when `file` holds one of these texts, otherwise what it holds.
std::string notOneOf(const std::filesystem::path& file, const std::vector<std::string>& texts);

/// For its life, the program's log is a text in a folder of its own, which no fault reaches.
class WatchedLog {
public:
    WatchedLog();
    /// The failures that routines have logged since the last call; the line that ends every export is none.
    int newFailures();

private:
    TemporaryFolder folder_;
    GlobalLogger logger_;
    int seen_ = 0;
};

} // namespace tv::test
