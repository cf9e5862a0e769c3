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
    lastTurn() = std::chrono::steady_clock::now();
    turn();
    lastTurn() = std::chrono::steady_clock::now();
}

} // namespace tv::turns
