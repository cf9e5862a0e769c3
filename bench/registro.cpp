// What an entry of the log costs at the start of a day and behind very many others, in both formats: push,
// entry and pop of one routine, in microseconds of the clock for each, over the first and the last hundredth.
// Usage: registro [entries, 1000000]
#include "logging/clsLogger.h"
#include "platform/Files.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

double microseconds(Clock::time_point from, long entries) {
    return std::chrono::duration<double, std::micro>(Clock::now() - from).count() /
           static_cast<double>(entries);
}

/// Pushes, logs and pops `entries` times.
double run(tv::clsLogger& logger, long entries) {
    const auto from = Clock::now();
    for (long i = 0; i < entries; ++i) {
        logger.callStack.push("frmValidador.validaBoleto");
        logger.logINFO("Validando o arquivo");
        logger.callStack.pop();
    }
    return microseconds(from, 3 * entries);
}

void measure(std::int16_t type, const char* name, long entries) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "registro-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    tv::clsLogger logger;
    logger.appTitle("Medida");
    logger.appVersion("1");
    logger.setPath(folder.string());
    logger.loggerFactory(type, tv::library::level::all);
    logger.callStack.setLogger(&logger);
    const long part = entries / 300;
    const double first = run(logger, part);
    run(logger, entries / 3 - 2 * part);
    const double last = run(logger, part);
    const auto size = std::filesystem::file_size(logger.getFilename());
    std::printf("%s: %ld entries, %.0f MB; first %.2f us, last %.2f us, ratio %.2f\n", name, entries,
                static_cast<double>(size) / 1e6, first, last, last / first);
    std::filesystem::remove_all(folder);
}

} // namespace

int main(int argc, char** argv) {
    const long entries = argc > 1 ? std::atol(argv[1]) : 1'000'000;
    measure(tv::clsLogger::typeTXT, "text", entries);
    measure(tv::clsLogger::typeXML, "XML", entries);
}
