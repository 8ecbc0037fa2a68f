#include "platform/quartzcore/CAMediaTime.h"

#include <glib.h>

#include <algorithm>
#include <atomic>

#include "platform/quartzcore/CATimeline.h"

namespace orvane::platform {

namespace {

std::atomic<CAVirtualClock*> currentClock{nullptr};
std::atomic<double> virtualTime{0};

std::atomic<void (*)(double time)> refreshHandler{nullptr};

}  // namespace

double CACurrentMediaTime() {
    if (currentClock.load(std::memory_order_acquire)) {
        return virtualTime.load(std::memory_order_relaxed);
    }
    return static_cast<double>(g_get_monotonic_time()) * 1e-6;
}

CAVirtualClock::CAVirtualClock(double start) {
    virtualTime = start;
    currentClock = this;
    CATimeline::instance().clockChanged();
}

CAVirtualClock::~CAVirtualClock() {
    currentClock = nullptr;
    CATimeline::instance().clockChanged();
}

CAVirtualClock* CAVirtualClock::current() {
    return currentClock.load(std::memory_order_acquire);
}

void CAVirtualClock::advanceTo(double time) {
    if (!(time >= virtualTime)) {
        return;
    }
    // Timers see their own times, however far the clock is advanced at once.
    CATimeline& timeline = CATimeline::instance();
    while (!timeline.isTicking() && timeline.nextTimer() < time) {
        virtualTime = std::max(virtualTime.load(), timeline.nextTimer());
        timeline.tick(virtualTime);
    }
    time = std::max(time, virtualTime.load());  // a timer's task may have advanced the clock
    virtualTime = time;
    if (auto* const handler = refreshHandler.load()) {
        handler(time);
    }
    timeline.tick(time);
}

void CAVirtualClock::advanceBy(double seconds) {
    advanceTo(virtualTime + seconds);
}

void CAVirtualClock::setRefreshHandler(void (*handler)(double time)) {
    refreshHandler = handler;
}

}  // namespace orvane::platform
