#pragma once

#include <gtk/gtk.h>

namespace orvane::platform {

// Converts the times of the desktop's events to the media clock. A program that was busy receives
// several events at once: how long a press took, and how fast a pointer was, is only known from the
// times at which they happened. Main thread only.
class GTKEventClock {
public:
    // Returns when the event happened that a controller handles, in seconds of the media clock:
    // now, if the desktop does not tell, and while a virtual clock runs. Never later than now, nor
    // earlier than the event before.
    static double mediaTime(GtkEventController* controller);
};

}  // namespace orvane::platform
