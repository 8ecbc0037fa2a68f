#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/quartzcore/CATimer.h"

struct _GSource;

namespace orvane::platform {

class CALayer;

// Keeps the layers on which animations run, the timers, and the completions that are due. It ends
// animations when their time has come, whether or not a window shows their layers. On the real
// clock, a timer of the main loop, set for the next beginning or end, posts a tick to the main
// queue; on a virtual clock, advancing the clock ticks. It is idle when no animation and no timer
// runs.
//
// Main thread only, except enqueueCompletion.
class CATimeline {
public:
    // Never destroyed, because layers and transactions may be destroyed at any time.
    static CATimeline& instance();

    // Called by a layer when its first animation has been added and its last one has been removed.
    void addLayer(CALayer& layer);
    void removeLayer(CALayer& layer);
    // Called when an animation that lasts from beginTime to endTime has been added to a layer.
    void animationAdded(double beginTime, double endTime);

    // Called by a timer that was started or stopped.
    void addTimer(const std::shared_ptr<CATimer::Schedule>& timer);
    void removeTimer(const std::shared_ptr<CATimer::Schedule>& timer);
    // The media time of the next call of a timer; infinity for none.
    double nextTimer() const;

    // Ends the animations that are over at `time` (seconds of media time; a time before the last
    // tick counts as that tick's), notifies the layers whose animations began or ended, calls the
    // timers that are due, and runs the completions. Application code runs in it. A tick within a
    // tick does nothing.
    void tick(double time);
    bool isTicking() const { return ticking_; }
    // Queues a tick of the present time, unless one is queued.
    void postTick();
    // Called when a virtual clock has been created or destroyed.
    void clockChanged();
    // Queues a completion for the next tick and makes sure that there is one. Any thread.
    void enqueueCompletion(std::function<void()> completion);

private:
    CATimeline();
    ~CATimeline() = delete;
    void wakeAt(double time);
    // Sets the timer for wakeTime_. Must be called with mutex_ locked.
    void setTimer();
    void postTickForCompletions();
    void callTimers(double time);
    void runCompletions();

    std::vector<CALayer*> layers_;
    std::vector<std::shared_ptr<CATimer::Schedule>> timers_;  // in the order of their starts
    bool ticking_ = false;
    double lastTick_ = -std::numeric_limits<double>::infinity();
    _GSource* timer_;
    std::mutex mutex_;  // guards the following members and the timer
    double wakeTime_ = std::numeric_limits<double>::infinity();
    std::vector<std::function<void()>> completions_;
    bool tickPosted_ = false;
};

}  // namespace orvane::platform
