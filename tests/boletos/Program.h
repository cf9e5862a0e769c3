#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace boletos::test {

/// How a call of the program ended, and what it wrote.
struct Outcome {
    int status = -1; ///< Exit status; -1 when a signal ended it.
    int signal = 0;  ///< The signal that ended it, or 0.
    std::string out;
    std::string err;
    double seconds = 0;   ///< Processor time that it took.
    double megabytes = 0; ///< Its memory at the peak.
};

/// What surrounds a call.
struct Surroundings {
    std::filesystem::path program; ///< Empty for the one that was built.
    std::filesystem::path folder;  ///< Working folder; empty for the test's own.
    int out = -1;                  ///< File descriptor for standard output; -1 to collect it.
    int err = -1;                  ///< The same for standard error.
};

/// The command-line program as a process of its own. The arguments are given as they are; whatever still runs
/// at the end is killed.
class Program {
public:
    explicit Program(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void send(int signal) const;
    /// What it has written to standard output so far.
    std::string outSoFar() const;
    /// Waits for its end.
    Outcome wait();

private:
    std::filesystem::path folder_; // where the outputs are collected
    pid_t pid_ = -1;
};

/// A whole call.
inline Outcome run(const std::vector<std::string>& arguments, const Surroundings& surroundings = {}) {
    return Program(arguments, surroundings).wait();
}

} // namespace boletos::test
