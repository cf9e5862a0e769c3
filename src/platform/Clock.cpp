#include "platform/Clock.h"

#include <ctime>
#include <utility>

namespace tv::clock {
namespace {

std::function<DateTime()>& source() {
    static std::function<DateTime()> installed;
    return installed;
}

DateTime machineTime() {
    const std::time_t seconds = std::time(nullptr);
    std::tm civil{};
#ifdef _WIN32
    localtime_s(&civil, &seconds);
#else
    localtime_r(&seconds, &civil);
#endif
    return at(civil.tm_year + 1900, static_cast<unsigned>(civil.tm_mon + 1),
              static_cast<unsigned>(civil.tm_mday), civil.tm_hour, civil.tm_min, civil.tm_sec);
}

} // namespace

DateTime now() {
    return source() ? source()() : machineTime();
}

void setSource(std::function<DateTime()> newSource) {
    source() = std::move(newSource);
}

Frozen::Frozen(DateTime moment)
    : previous_(source()) {
    setSource([moment] { return moment; });
}

Frozen::~Frozen() {
    setSource(std::move(previous_));
}

DateTime at(int year, unsigned month, unsigned day, int hour, int minute, int second) {
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                                           std::chrono::day{day}};
    return std::chrono::local_days{date} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
           std::chrono::seconds{second};
}

} // namespace tv::clock
