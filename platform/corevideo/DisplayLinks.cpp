#include "platform/corevideo/DisplayLinks.h"

#include <glib.h>

#include <algorithm>
#include <utility>

#include "platform/corevideo/CVDisplay.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

namespace {

// Below the desktop's redrawing (120): a frame that is due comes before the timer.
constexpr int kTimerPriority = G_PRIORITY_HIGH_IDLE + 30;

// The time between two refreshes by the timer, in microseconds. With a display, the timer only
// watches whether the display still refreshes.
constexpr gint64 kPeriod = 1000000 / 60;
constexpr gint64 kPeriodWithDisplay = 50000;

gboolean dispatchTimer(GSource* /*source*/, GSourceFunc /*callback*/, gpointer /*data*/) {
    DisplayLinks::shared().refreshByTimer();
    return G_SOURCE_CONTINUE;
}

GSourceFuncs timerFunctions = {nullptr, nullptr, dispatchTimer, nullptr, nullptr, nullptr};

}  // namespace

DisplayLinks& DisplayLinks::shared() {
    static auto& links = *new DisplayLinks;
    return links;
}

DisplayLinks::DisplayLinks() : timer_(g_source_new(&timerFunctions, sizeof(GSource))) {
    g_source_set_name(timer_, "orvane display links");
    g_source_set_priority(timer_, kTimerPriority);
    g_source_attach(timer_, nullptr);
    CAVirtualClock::setRefreshHandler([](double time) { shared().refresh(time); });
}

CVDisplayLink::Return DisplayLinks::setCallback(DisplayLinkState& link,
                                                CVDisplayLink::OutputCallback callback) {
    if (!callback) {
        return kCVReturnInvalidArgument;
    }
    const std::scoped_lock lock(mutex_);
    if (link.hasStarted) {
        return kCVReturnDisplayLinkAlreadyRunning;
    }
    link.callback = std::move(callback);
    return kCVReturnSuccess;
}

CVDisplayLink::Return DisplayLinks::start(const std::shared_ptr<DisplayLinkState>& link) {
    {
        const std::scoped_lock lock(mutex_);
        if (!link->callback) {
            return kCVReturnDisplayLinkCallbacksNotSet;
        }
        if (link->isRunning) {
            return kCVReturnDisplayLinkAlreadyRunning;
        }
        link->hasStarted = true;
        link->isRunning = true;
        running_.push_back(link);
        if (running_.size() > 1) {
            return kCVReturnSuccess;
        }
        setTimer();
        if (displays_.empty()) {
            return kCVReturnSuccess;
        }
    }
    if (isMainThread()) {
        requestRefresh();
    } else {
        dispatchMainAsync([this] { requestRefresh(); });
    }
    return kCVReturnSuccess;
}

CVDisplayLink::Return DisplayLinks::stop(const std::shared_ptr<DisplayLinkState>& link) {
    const std::scoped_lock lock(mutex_);
    if (!std::exchange(link->isRunning, false)) {
        return kCVReturnDisplayLinkNotRunning;
    }
    std::erase(running_, link);
    return kCVReturnSuccess;
}

bool DisplayLinks::isAnyRunning() {
    const std::scoped_lock lock(mutex_);
    return !running_.empty();
}

void DisplayLinks::addDisplay(CVDisplay& display) {
    {
        const std::scoped_lock lock(mutex_);
        displays_.push_back(&display);
    }
    requestRefresh();
}

void DisplayLinks::removeDisplay(CVDisplay& display) {
    {
        const std::scoped_lock lock(mutex_);
        std::erase(displays_, &display);
    }
    requestRefresh();
}

void DisplayLinks::requestRefresh() {
    const CVDisplay* const display = [this]() -> const CVDisplay* {
        const std::scoped_lock lock(mutex_);
        return running_.empty() || displays_.empty() ? nullptr : displays_.front();
    }();
    if (display != nullptr) {
        display->requestRefresh_();
    }
}

bool DisplayLinks::refreshByDisplay(const CVDisplay& display, double time) {
    if (CAVirtualClock::current() != nullptr) {
        return false;
    }
    const auto isWanted = [&] {
        const std::scoped_lock lock(mutex_);
        return !running_.empty() && displays_.front() == &display;
    };
    if (!isWanted()) {
        return false;
    }
    refreshAtRealTime(time);
    {
        const std::scoped_lock lock(mutex_);
        hasRefreshed_ = true;
    }
    return isWanted();
}

void DisplayLinks::setTimer() {
    if (running_.empty()) {
        g_source_set_ready_time(timer_, -1);
        return;
    }
    g_source_set_ready_time(
        timer_, g_get_monotonic_time() + (displays_.empty() ? kPeriod : kPeriodWithDisplay));
}

void DisplayLinks::refreshByTimer() {
    {
        const std::scoped_lock lock(mutex_);
        setTimer();
        if (std::exchange(hasRefreshed_, false) || CAVirtualClock::current() != nullptr) {
            return;
        }
        if (!displays_.empty()) {
            std::rotate(displays_.begin(), displays_.begin() + 1, displays_.end());
        }
    }
    refreshAtRealTime(CACurrentMediaTime());
    requestRefresh();
}

void DisplayLinks::refreshAtRealTime(double time) {
    // A display's frame may show a time that is a little earlier than that of the last timer.
    lastTime_ = std::max(lastTime_, time);
    refresh(lastTime_);
}

void DisplayLinks::refresh(double time) {
    // A callback may run a loop of its own: links wait for it, as the main queue does.
    if (std::exchange(refreshing_, true)) {
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        batch_ = running_;
    }
    const CVTimeStamp outputTime{static_cast<std::uint64_t>(std::max(time, 0.0) * 1e9 + 0.5)};
    for (const std::shared_ptr<DisplayLinkState>& link : batch_) {
        const bool isRunning = [&] {
            const std::scoped_lock lock(mutex_);
            return link->isRunning;
        }();
        if (isRunning) {
            CVDisplayLink handle(link);
            link->callback(handle, outputTime);
        }
    }
    batch_.clear();
    refreshing_ = false;
}

}  // namespace orvane::platform
