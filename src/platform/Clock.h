#pragma once

#include <chrono>
#include <functional>

namespace tv {

/// A date with a time of day, civil time of the machine's time zone, seconds' resolution.
using DateTime = std::chrono::local_seconds;

/// The present time. Everything in the system that asks for "now" asks here.
namespace clock {

DateTime now();

/// Puts another source in the place of the machine's clock; an empty function restores it. For tests.
void setSource(std::function<DateTime()> source);

/// For tests: time stands at one moment for the life of the object; the source before comes back behind it.
class Frozen {
public:
    explicit Frozen(DateTime moment);
    ~Frozen();
    Frozen(const Frozen&) = delete;
    Frozen& operator=(const Frozen&) = delete;

private:
    std::function<DateTime()> previous_;
};

/// A moment from its civil parts (year, month 1-12, day, hour, minute, second).
DateTime at(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0);

} // namespace clock
} // namespace tv
