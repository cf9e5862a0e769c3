#include "platform/Turns.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace tv::turns {
namespace {

class Turns : public testing::Test {
protected:
    ~Turns() override { setHandler({}); }
    int taken = 0;
};

TEST_F(Turns, do_nothing_without_a_handler) {
    due();
    take();
    EXPECT_EQ(taken, 0);
}

TEST_F(Turns, come_at_once_and_then_not_before_the_interval_is_over) {
    setHandler([this] { ++taken; });
    due();
    EXPECT_EQ(taken, 1);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 1000; ++i) {
        due();
    }
    if (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(15)) {
        EXPECT_EQ(taken, 1);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const int before = taken;
    due();
    EXPECT_EQ(taken, before + 1);
}

TEST_F(Turns, can_be_taken_at_any_time) {
    setHandler([this] { ++taken; });
    take();
    take();
    EXPECT_EQ(taken, 2);
}

TEST_F(Turns, know_whether_one_is_being_taken) {
    bool inside = false;
    bool behindTheInnerOne = false;
    setHandler([&] {
        if (++taken == 1) {
            inside = taking();
            take();
            behindTheInnerOne = taking();
        }
    });
    EXPECT_FALSE(taking());
    take();
    EXPECT_TRUE(inside);
    EXPECT_TRUE(behindTheInnerOne);
    EXPECT_FALSE(taking());
    setHandler([] { throw std::runtime_error("a turn fails"); });
    EXPECT_THROW(take(), std::runtime_error);
    EXPECT_FALSE(taking());
}

TEST_F(Turns, may_change_the_handler_and_ask_for_turns_themselves) {
    setHandler([this] {
        ++taken;
        setHandler({});
        due();
    });
    take();
    take();
    EXPECT_EQ(taken, 1);
}

} // namespace
} // namespace tv::turns
