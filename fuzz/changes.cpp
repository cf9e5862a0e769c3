// Changes good files at a few places and gives them to a reader, again and again. To be built with the
// sanitizers, whose findings end the program. Progress is told every 1,000 changes; the same seed makes the
// same changes. Usage: fuzz_<reader> <changes a file> <seed> <file>...
#include "Target.h"

#include "platform/CompoundFile.h"
#include "platform/Error.h"
#include "platform/Files.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

void change(std::string& bytes, std::mt19937& random) {
    const std::size_t places = 1 + random() % 6;
    for (std::size_t i = 0; i < places; ++i) {
        char& byte = bytes[random() % bytes.size()];
        switch (random() % 4) {
        case 0:
            byte = static_cast<char>(byte ^ static_cast<char>(1U << random() % 8));
            break;
        case 1:
            byte = '\0';
            break;
        case 2:
            byte = '\xFF';
            break;
        default:
            byte = static_cast<char>(random() % 256);
        }
    }
    if (random() % 16 == 0) {
        bytes.resize(random() % bytes.size());
    }
}

/// The file, and what it packs if it is a container.
std::vector<std::string> seedsOf(const std::string& path) {
    std::vector<std::string> seeds{tv::files::readAll(path)};
    try {
        seeds.push_back(tv::compound::unpack(seeds.front()));
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): a file of another kind
    }
    return seeds;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 4) {
        std::fprintf(stderr, "usage: %s <changes a file> <seed> <file>...\n", arguments[0]);
        return EXIT_FAILURE;
    }
    const std::vector<std::string> words(arguments + 1, arguments + count);
    const std::uint64_t changes = std::strtoull(words[0].c_str(), nullptr, 10);
    std::mt19937 random(static_cast<std::uint32_t>(std::strtoul(words[1].c_str(), nullptr, 10)));
    std::chrono::duration<double> longest{};
    for (std::size_t file = 2; file < words.size(); ++file) {
        for (const std::string& seed : seedsOf(words[file])) {
            for (std::uint64_t i = 0; i < changes && !seed.empty(); ++i) {
                std::string bytes = seed;
                change(bytes, random);
                const auto before = Clock::now();
                readForeign(bytes);
                longest = std::max<std::chrono::duration<double>>(longest, Clock::now() - before);
                if (i % 1000 == 0) {
                    std::printf("%s: %llu changes, at most %.3f s\n", words[file].c_str(),
                                static_cast<unsigned long long>(i), longest.count());
                    static_cast<void>(std::fflush(stdout));
                }
            }
        }
    }
    return EXIT_SUCCESS;
}
