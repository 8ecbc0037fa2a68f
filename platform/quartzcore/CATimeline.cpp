#include "platform/quartzcore/CATimeline.h"

#include <glib.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimerSchedule.h"

namespace orvane::platform {

namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();

// Only posts the tick: application code runs in a tick, and belongs in the main queue's turns.
gboolean onTimer(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    g_source_set_ready_time(source, -1);
    CATimeline::instance().postTick();
    return G_SOURCE_CONTINUE;
}

// Calls a function of the application and logs what it throws.
void callLogged(const std::function<void()>& function, const char* what) noexcept {
    try {
        function();
    } catch (const std::exception& error) {
        NSLog("%s failed: %s", what, error.what());
    } catch (const char* message) {
        NSLog("%s failed: %s", what, message);
    } catch (...) {
        NSLog("%s failed", what);
    }
}

GSourceFuncs timerFunctions = {nullptr, nullptr, onTimer, nullptr, nullptr, nullptr};

}  // namespace

CATimeline& CATimeline::instance() {
    static CATimeline& timeline = *new CATimeline;
    return timeline;
}

CATimeline::CATimeline() : timer_(g_source_new(&timerFunctions, sizeof(GSource))) {
    g_source_attach(timer_, nullptr);
}

void CATimeline::addLayer(CALayer& layer) {
    layer.timelineIndex_ = layers_.size();
    layers_.push_back(&layer);
}

void CATimeline::removeLayer(CALayer& layer) {
    CALayer* last = layers_.back();
    layers_[layer.timelineIndex_] = last;
    last->timelineIndex_ = layer.timelineIndex_;
    layers_.pop_back();
}

void CATimeline::animationAdded(double beginTime, double endTime) {
    wakeAt(beginTime > CACurrentMediaTime() ? beginTime : endTime);
}

void CATimeline::addTimer(const std::shared_ptr<CATimer::Schedule>& timer) {
    timers_.push_back(timer);
    wakeAt(timer->due);
}

void CATimeline::removeTimer(const std::shared_ptr<CATimer::Schedule>& timer) {
    timer->isRunning = false;
    std::erase(timers_, timer);
}

double CATimeline::nextTimer() const {
    double next = kNever;
    for (const std::shared_ptr<CATimer::Schedule>& timer : timers_) {
        next = std::min(next, timer->due);
    }
    return next;
}

void CATimeline::callTimers(double time) {
    if (nextTimer() > time) {
        return;
    }
    // A copy, in the order in which they are due: a timer may start and stop others.
    auto due = timers_;
    std::erase_if(due, [time](const auto& timer) { return !(timer->due <= time); });
    std::stable_sort(due.begin(), due.end(),
                     [](const auto& a, const auto& b) { return a->due < b->due; });
    for (const std::shared_ptr<CATimer::Schedule>& timer : due) {
        if (!timer->isRunning) {
            continue;
        }
        if (timer->period > 0) {
            // The first of its times that is still to come.
            timer->due += timer->period * (std::floor((time - timer->due) / timer->period) + 1);
        } else {
            removeTimer(timer);
        }
        callLogged(timer->function, "A timer's task");
    }
}

void CATimeline::wakeAt(double time) {
    const std::scoped_lock lock(mutex_);
    if (time < wakeTime_) {
        wakeTime_ = time;
        setTimer();
    }
}

void CATimeline::setTimer() {
    if (CAVirtualClock::current() || wakeTime_ == kNever) {
        g_source_set_ready_time(timer_, -1);
        return;
    }
    // The media clock is the main loop's clock, which counts microseconds in 64 bits. Rounded up:
    // a timer that is early would find nothing to end.
    const double microseconds = std::ceil(wakeTime_ * 1e6);
    g_source_set_ready_time(
        timer_, static_cast<gint64>(std::clamp(microseconds, 0.0, static_cast<double>(1LL << 62))));
}

void CATimeline::postTick() {
    {
        const std::scoped_lock lock(mutex_);
        if (tickPosted_) {
            return;
        }
        tickPosted_ = true;
    }
    dispatchMainAsync([this] {
        {
            const std::scoped_lock lock(mutex_);
            tickPosted_ = false;
        }
        if (!CAVirtualClock::current()) {
            tick(CACurrentMediaTime());
        }
    });
}

void CATimeline::clockChanged() {
    lastTick_ = -kNever;
    {
        const std::scoped_lock lock(mutex_);
        wakeTime_ = layers_.empty() && timers_.empty() ? kNever : CACurrentMediaTime();
        setTimer();
    }
    postTickForCompletions();
}

void CATimeline::tick(double time) {
    if (ticking_) {
        return;
    }
    ticking_ = true;
    // A window's frame may show a time that is a little earlier than that of the last timer.
    time = std::max(time, lastTick_);
    {
        const std::scoped_lock lock(mutex_);
        wakeTime_ = kNever;
    }
    double next = kNever;
    // Backward, because a layer whose last animation has ended leaves the list and the last layer
    // takes its place. No application code runs here: layers only mark their views as changed.
    for (std::size_t i = layers_.size(); i-- > 0;) {
        next = std::min(next, layers_[i]->advanceAnimations(lastTick_, time));
    }
    lastTick_ = time;
    callTimers(time);
    runCompletions();
    ticking_ = false;
    next = std::min(next, nextTimer());
    {
        const std::scoped_lock lock(mutex_);
        wakeTime_ = std::min(wakeTime_, next);
        setTimer();
    }
    postTickForCompletions();
}

void CATimeline::enqueueCompletion(std::function<void()> completion) {
    {
        const std::scoped_lock lock(mutex_);
        completions_.push_back(std::move(completion));
    }
    postTickForCompletions();
}

void CATimeline::postTickForCompletions() {
    const bool isWaiting = [this] {
        const std::scoped_lock lock(mutex_);
        return !completions_.empty();
    }();
    if (isWaiting && !CAVirtualClock::current()) {
        postTick();
    }
}

void CATimeline::runCompletions() {
    // One batch: completions that these cause wait for the next tick, so that two animations that
    // restart each other cannot occupy the main thread.
    std::vector<std::function<void()>> due;
    {
        const std::scoped_lock lock(mutex_);
        due.swap(completions_);
    }
    for (std::function<void()>& completion : due) {
        callLogged(completion, "An animation's completion");
        completion = nullptr;
    }
}

}  // namespace orvane::platform
