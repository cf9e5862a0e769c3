#include "platform/Turns.h"

#include <chrono>
#include <utility>

namespace tv::turns {
namespace {

using Moment = std::chrono::steady_clock::time_point;

constexpr std::chrono::milliseconds interval{15};

std::function<void()>& handler() {
    static std::function<void()> installed;
    return installed;
}

Moment& lastTurn() {
    static Moment moment = Moment::min();
    return moment;
}

/// Turns that stand on the call stack.
int& depth() {
    static int turns = 0;
    return turns;
}

class InTurn {
public:
    InTurn() noexcept { ++depth(); }
    ~InTurn() { --depth(); }
    InTurn(const InTurn&) = delete;
    InTurn& operator=(const InTurn&) = delete;
};

} // namespace

void setHandler(std::function<void()> newHandler) {
    handler() = std::move(newHandler);
    lastTurn() = Moment::min();
}

void due() {
    if (!handler()) {
        return;
    }
    const Moment now = std::chrono::steady_clock::now();
    if (lastTurn() == Moment::min() || now - lastTurn() >= interval) {
        take();
    }
}

void take() {
    // A copy, because a turn may install another handler while this one runs.
    const std::function<void()> turn = handler();
    if (!turn) {
        return;
    }
    const InTurn here;
    lastTurn() = std::chrono::steady_clock::now();
    turn();
    lastTurn() = std::chrono::steady_clock::now();
}

bool taking() noexcept {
    return depth() > 0;
}

} // namespace tv::turns
