#include "platform/gtk/GTKEventClock.h"

#include <optional>

#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

namespace {

// In seconds. A difference that is larger by this has another cause than a busy program: the
// desktop's count of milliseconds, of 32 bits, has begun again.
constexpr double kLongestDelay = 2;

// The media clock less the desktop's, as far as it is known: that of the event that took the
// shortest time from the desktop to the program.
std::optional<double> difference;

}  // namespace

double GTKEventClock::mediaTime(GtkEventController* controller) {
    const double now = CACurrentMediaTime();
    const guint32 milliseconds = gtk_event_controller_get_current_event_time(controller);
    if (milliseconds == GDK_CURRENT_TIME || CAVirtualClock::current() != nullptr) {
        return now;
    }
    const double happened = milliseconds / 1000.0;
    const double current = now - happened;
    if (!difference || current < *difference || current > *difference + kLongestDelay) {
        difference = current;
    }
    return happened + *difference;
}

}  // namespace orvane::platform
