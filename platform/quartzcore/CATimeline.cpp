#include "platform/quartzcore/CATimeline.h"

#include <glib.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

gboolean onTimer(GSource*, GSourceFunc, gpointer) {
    CATimeline::instance().tick(CACurrentMediaTime());
    return G_SOURCE_CONTINUE;
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

void CATimeline::wakeAt(double time) {
    const std::scoped_lock lock(mutex_);
    if (time < wakeTime_) {
        wakeTime_ = time;
        setTimer();
    }
}

void CATimeline::setTimer() {
    if (CAVirtualClock::current() || (completions_.empty() && wakeTime_ == never)) {
        g_source_set_ready_time(timer_, -1);
        return;
    }
    // The media clock is the main loop's clock. Rounded up, or the timer would be early and find
    // nothing due. Beyond what the loop can count, it is the end of time.
    const double microseconds = completions_.empty() ? std::ceil(wakeTime_ * 1e6) : 0;
    g_source_set_ready_time(
        timer_, static_cast<gint64>(std::clamp(microseconds, 0.0, static_cast<double>(1LL << 62))));
}

void CATimeline::clockChanged() {
    lastTick_ = -never;
    const std::scoped_lock lock(mutex_);
    wakeTime_ = layers_.empty() ? never : CACurrentMediaTime();
    setTimer();
}

void CATimeline::tick(double time) {
    if (ticking_) {
        return;
    }
    ticking_ = true;
    {
        const std::scoped_lock lock(mutex_);
        wakeTime_ = never;
    }
    double next = never;
    // Backwards: a layer that has nothing left to run leaves the list, and the last one takes its
    // place. What the layers tell their views only marks them; no application code runs here.
    for (std::size_t i = layers_.size(); i-- > 0;) {
        next = std::min(next, layers_[i]->advanceAnimations(lastTick_, time));
    }
    lastTick_ = time;
    runCompletions();
    ticking_ = false;
    const std::scoped_lock lock(mutex_);
    wakeTime_ = std::min(wakeTime_, next);
    setTimer();
}

void CATimeline::enqueueCompletion(std::function<void()> completion) {
    const std::scoped_lock lock(mutex_);
    completions_.push_back(std::move(completion));
    setTimer();
}

void CATimeline::runCompletions() {
    // One batch: what completions complete in turn waits for the next tick, so that two that start
    // one another cannot hold the main thread.
    std::vector<std::function<void()>> due;
    {
        const std::scoped_lock lock(mutex_);
        due.swap(completions_);
    }
    for (std::function<void()>& completion : due) {
        try {
            completion();
        } catch (const std::exception& error) {
            NSLog("An animation's completion failed: %s", error.what());
        } catch (const char* message) {
            NSLog("An animation's completion failed: %s", message);
        } catch (...) {
            NSLog("An animation's completion failed");
        }
        completion = nullptr;
    }
}

}  // namespace orvane::platform
