#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Calls a function at times of the media clock, on the main thread: in a turn of the main queue, or
// at exactly these times while a virtual clock is advanced. A time that has passed because the main
// thread was busy is made up for by one call. What the function throws is logged.
//
// The destructor stops the timer. Main thread only.
class ORVANE_EXPORT CATimer {
public:
    CATimer();
    ~CATimer();
    CATimer(const CATimer&) = delete;
    CATimer& operator=(const CATimer&) = delete;

    // Calls `function` at a media time in seconds, and then in each `period`, unless it is 0.
    // Replaces what the timer did before.
    void start(double time, double period, std::function<void()> function);
    // May be called from the function, which is destroyed after it has returned.
    void stop();
    // Whether a call is to come.
    bool isRunning() const;

private:
    friend class CATimeline;
    struct Schedule;

    std::shared_ptr<Schedule> schedule_;
};

}  // namespace orvane::platform
