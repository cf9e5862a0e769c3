#include "platform/Deadline.h"

#include <libxml/xpath.h>

#include <pthread.h>

namespace tv::xml {
namespace {

/// Processor time of the thread that the clock belongs to.
std::chrono::nanoseconds timeOf(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

Deadline::Deadline(xsltTransformContext& context, std::chrono::milliseconds limit)
    : context_(context) {
    clockid_t clock{};
    if (::pthread_getcpuclockid(::pthread_self(), &clock) == 0) {
        watcher_ = std::thread([this, clock, end = timeOf(clock) + limit] { watch(clock, end); });
    }
}

Deadline::~Deadline() {
    {
        const std::lock_guard lock(mutex_);
        over_ = true;
    }
    ended_.notify_one();
    if (watcher_.joinable()) {
        watcher_.join();
    }
}

// A thread takes no more processor time than time goes by, so there is nothing to look at before that.
void Deadline::watch(clockid_t clock, std::chrono::nanoseconds end) {
    std::unique_lock lock(mutex_);
    while (!over_) {
        const std::chrono::nanoseconds left = end - timeOf(clock);
        if (left <= std::chrono::nanoseconds::zero()) {
            stopTransform();
            return;
        }
        ended_.wait_for(lock, left, [this] { return over_; });
    }
}

// The processor compares its counts with these bounds at each instruction and at each step of an expression.
void Deadline::stopTransform() {
    passed_ = true;
    std::atomic_ref(context_.opLimit).store(1);
    std::atomic_ref(context_.xpathCtxt->opLimit).store(1);
}

} // namespace tv::xml
