#pragma once

#include <libxslt/xsltInternals.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <thread>

namespace tv::xml {

/// Ends a transform of the thread that made the object when that thread has taken so much processor time.
/// The counts of instructions and steps do not see what a single one costs: a look through a long text is one
/// step.
class Deadline {
public:
    Deadline(xsltTransformContext& context, std::chrono::milliseconds limit);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    bool passed() const noexcept { return passed_; }

private:
    void watch(clockid_t clock, std::chrono::nanoseconds end);
    void stopTransform();

    xsltTransformContext& context_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool over_ = false;
    std::atomic<bool> passed_ = false;
    std::thread watcher_;
};

} // namespace tv::xml
