#pragma once

#include <functional>
#include <limits>
#include <mutex>
#include <vector>

struct _GSource;

namespace orvane::platform {

class CALayer;

// The layers on which animations run, and the completions that are due. It ends animations when
// their time has come, whether or not a window shows them: on the real clock by one timer of the
// main loop, set for the next beginning or end; on a virtual clock when that is advanced. When
// nothing runs it sleeps.
//
// Main thread only, but for enqueueCompletion.
class CATimeline {
public:
    // Lives as long as the process, so that layers and transactions may go at any time.
    static CATimeline& instance();

    // By a layer: its first running animation has come, its last has gone.
    void addLayer(CALayer& layer);
    void removeLayer(CALayer& layer);
    // An animation of this span has come.
    void animationAdded(double beginTime, double endTime);

    // Ends what is over at that time, tells layers whose animations began or ended, then runs the
    // completions that are due. Application code runs in it. Does nothing within itself.
    void tick(double time);
    // Sets the timer anew; after the clock was replaced.
    void clockChanged();
    // Called once on the main thread, soon. Any thread.
    void enqueueCompletion(std::function<void()> completion);

private:
    CATimeline();
    ~CATimeline() = delete;
    void wakeAt(double time);
    // To wakeTime_, or to now when completions wait. With mutex_ held.
    void setTimer();
    void runCompletions();

    std::vector<CALayer*> layers_;
    bool ticking_ = false;
    double lastTick_ = -std::numeric_limits<double>::infinity();
    _GSource* timer_;
    std::mutex mutex_;  // guards what follows, and the setting of the timer
    double wakeTime_ = std::numeric_limits<double>::infinity();
    std::vector<std::function<void()>> completions_;
};

}  // namespace orvane::platform
