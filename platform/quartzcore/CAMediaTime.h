#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The media time: seconds on a clock that never goes back, which animations and events use. Any
// thread.
ORVANE_EXPORT double CACurrentMediaTime();

// While a virtual clock exists, media time changes by advanceTo only, so that tests and off-screen
// frames are exact. Real time has no effect then: no timers are set, and advanceTo makes display
// links tick. Create at most one at a time. Main thread only.
class ORVANE_EXPORT CAVirtualClock {
public:
    // `start` is the first media time, in seconds. It must be greater than zero, which means "no
    // time" to animations and display links.
    explicit CAVirtualClock(double start = 1);
    ~CAVirtualClock();
    CAVirtualClock(const CAVirtualClock&) = delete;
    CAVirtualClock& operator=(const CAVirtualClock&) = delete;

    // The virtual clock that exists, or null.
    static CAVirtualClock* current();

    // Calls the timers that are due before `time`, each at its own time. Then sets the media time,
    // calls the refresh handler, and ends the animations that are over and runs their completions.
    // A time before the current one is ignored.
    void advanceTo(double time);
    // Calls advanceTo with a later time, in seconds from the current one.
    void advanceBy(double seconds);

    // Sets the function that every virtual clock calls with its new time. Display links use it. Any
    // thread.
    static void setRefreshHandler(void (*handler)(double time));
};

}  // namespace orvane::platform
