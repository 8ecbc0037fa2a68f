#pragma once

#include <functional>
#include <list>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Seconds on a clock that never goes back: the time base of animations and events. Any thread.
ORVANE_EXPORT double CACurrentMediaTime();

// While one exists, media time stands still but for advanceTo: tests and exact off-screen frames
// hold the clock. Nothing happens by real time then: no timers are set, and display links tick from
// advanceTo. At most one at a time. Main thread only.
class ORVANE_EXPORT CAVirtualClock {
public:
    explicit CAVirtualClock(double start = 0);
    ~CAVirtualClock();
    CAVirtualClock(const CAVirtualClock&) = delete;
    CAVirtualClock& operator=(const CAVirtualClock&) = delete;

    static CAVirtualClock* current();

    // Sets the time, lets the observers see it, then ends what is over and runs completions. A time
    // before the present one is ignored.
    void advanceTo(double time);
    void advanceBy(double seconds);

    // Called at each advance until removed; from within the call too.
    using Observer = std::function<void(double time)>;
    using ObserverId = std::list<Observer>::iterator;
    static ObserverId addObserver(Observer observer);
    static void removeObserver(ObserverId id);
};

}  // namespace orvane::platform
