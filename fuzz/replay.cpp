// Replays a folder of inputs and then changes them, for compilers without libFuzzer. To be built with the
// sanitizers, whose findings end the program; the input under way is then left as "<program>.finding". The
// same folder gets the same changes in every run.
// Usage: fuzz_<target> <seconds of processor time> <folder or file>...
#include "Target.h"

#include "platform/Files.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string>
#include <sys/time.h>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int secondsAnInput = 10;

/// What the sanitizers ask for at their start: findings end in a signal, and memory has a bound.
extern "C" const char* __asan_default_options() { // NOLINT(bugprone-reserved-identifier): their name
    return "abort_on_error=1:hard_rss_limit_mb=2048:max_allocation_size_mb=1024";
}
extern "C" const char* __ubsan_default_options() { // NOLINT(bugprone-reserved-identifier)
    return "abort_on_error=1:print_stacktrace=1";
}

std::string underWay;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): the signal asks for it
std::string keptUnder; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// Where sanitizers, broken promises and lost exceptions end.
extern "C" void keepInput(int signal) {
    const int file = ::open(keptUnder.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
    const bool isKept = file >= 0 && ::write(file, underWay.data(), underWay.size()) >= 0;
    std::fprintf(stderr, "%s; input %s: %s\n", signal == SIGPROF ? "too much time" : "a finding",
                 isKept ? "kept" : "not kept", keptUnder.c_str());
    ::_exit(EXIT_FAILURE);
}

void runOne(std::string bytes) {
    underWay = std::move(bytes);
    const itimerval limit{{0, 0}, {secondsAnInput, 0}};
    ::setitimer(ITIMER_PROF, &limit, nullptr);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(underWay.data()), underWay.size());
}

/// Changes bytes, or takes out, repeats or moves a piece, or puts in a piece of another input.
void change(std::string& bytes, const std::string& other, std::mt19937& random) {
    const auto below = [&random](std::size_t bound) { return bound == 0 ? 0 : random() % bound; };
    const std::size_t at = below(bytes.size() + 1);
    const std::size_t length = 1 + below(random() % 4 == 0 ? 256 : 8);
    switch (random() % 6) {
    case 0:
        bytes.erase(at, length);
        return;
    case 1:
        bytes.insert(below(bytes.size() + 1), bytes.substr(at, length));
        return;
    case 2:
        bytes.insert(at, other.substr(below(other.size()), length));
        return;
    case 3:
        bytes.replace(at, length, other.substr(below(other.size()), length));
        return;
    default:
        if (at < bytes.size()) {
            const char bit = static_cast<char>(bytes[at] ^ static_cast<char>(1U << random() % 8));
            bytes[at] = random() % 2 == 0 ? bit : static_cast<char>(random() % 256);
        }
    }
}

std::vector<std::string> inputsOf(const std::vector<std::string>& paths) {
    std::vector<std::filesystem::path> files;
    for (const std::string& path : paths) {
        if (std::filesystem::is_directory(path)) {
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                files.push_back(entry.path());
            }
        } else {
            files.emplace_back(path);
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> inputs;
    for (const std::filesystem::path& file : files) {
        inputs.push_back(tv::files::readAll(file));
    }
    return inputs;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments, arguments + count);
    const std::vector<std::string> inputs = inputsOf({words.begin() + std::min(count, 2), words.end()});
    if (inputs.empty()) {
        std::fprintf(stderr, "usage: %s <seconds> <folder or file>...\n", arguments[0]);
        return EXIT_FAILURE;
    }
    keptUnder = words[0] + ".finding";
    std::signal(SIGABRT, keepInput);
    std::signal(SIGPROF, keepInput);
    std::for_each(inputs.begin(), inputs.end(), runOne);

    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same changes each time
    const std::clock_t end = std::clock() + std::atol(words[1].c_str()) * CLOCKS_PER_SEC;
    unsigned long changed = 0;
    for (; std::clock() < end; ++changed) {
        std::string bytes = inputs[random() % inputs.size()];
        for (std::size_t i = 1 + random() % 4; i > 0; --i) {
            change(bytes, inputs[random() % inputs.size()], random);
        }
        runOne(std::move(bytes));
    }
    std::printf("%zu inputs, %lu changes\n", inputs.size(), changed);
    return EXIT_SUCCESS;
}
