#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Seconds on a clock that never goes back: the time base of animations and events. Any thread.
ORVANE_EXPORT double CACurrentMediaTime();

// While one exists, media time stands still but for advanceTo: tests and exact off-screen frames
// hold the clock. Nothing happens by real time then: no timers are set, and display links tick from
// advanceTo. At most one at a time. Main thread only.
class ORVANE_EXPORT CAVirtualClock {
public:
    // Above zero: to animations and display links, a time of zero is none.
    explicit CAVirtualClock(double start = 1);
    ~CAVirtualClock();
    CAVirtualClock(const CAVirtualClock&) = delete;
    CAVirtualClock& operator=(const CAVirtualClock&) = delete;

    static CAVirtualClock* current();

    // Sets the time, calls the refresh handler, then ends the animations that are over and runs
    // completions. A time before the present one is ignored.
    void advanceTo(double time);
    void advanceBy(double seconds);

    // Called with the new time at each advance of any virtual clock: for the display links. Any
    // thread.
    static void setRefreshHandler(void (*handler)(double time));
};

}  // namespace orvane::platform
