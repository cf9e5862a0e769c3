#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

namespace tv::clock {
namespace {

TEST(Clock, gives_the_civil_time_of_the_machine) {
    const std::time_t seconds = std::time(nullptr);
    std::tm civil{};
    localtime_r(&seconds, &civil);
    const DateTime expected =
        at(civil.tm_year + 1900, static_cast<unsigned>(civil.tm_mon + 1),
           static_cast<unsigned>(civil.tm_mday), civil.tm_hour, civil.tm_min, civil.tm_sec);
    EXPECT_LE(now() - expected, std::chrono::seconds(2));
    EXPECT_GE(now() - expected, std::chrono::seconds(0));
}

TEST(Clock, stands_still_while_frozen_and_goes_on_behind) {
    const DateTime outer = at(2024, 1, 31, 23, 59, 58);
    {
        const Frozen frozen(outer);
        EXPECT_EQ(now(), outer);
        {
            const Frozen inner(at(2000, 2, 29));
            EXPECT_EQ(now(), at(2000, 2, 29, 0, 0, 0));
        }
        EXPECT_EQ(now(), outer) << "the source before comes back";
    }
    EXPECT_GT(now(), at(2024, 2, 1));
}

TEST(Clock, takes_another_source) {
    int calls = 0;
    setSource([&] { return at(2001, 1, 1) + std::chrono::seconds(++calls); });
    EXPECT_EQ(now(), at(2001, 1, 1, 0, 0, 1));
    EXPECT_EQ(now(), at(2001, 1, 1, 0, 0, 2));
    setSource({});
    EXPECT_GT(now(), at(2024, 1, 1));
}

TEST(Clock, builds_moments_from_civil_parts) {
    EXPECT_EQ(at(1970, 1, 1).time_since_epoch().count(), 0);
    EXPECT_EQ(at(2000, 3, 1) - at(2000, 2, 28), std::chrono::days(2));
}

} // namespace
} // namespace tv::clock
