#pragma once

#include <chrono>
#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace events {

// The step of a gesture that an event reports.
enum class TouchEventPhase { Began = 0, Moved = 1, Ended = 2, Cancelled = 3 };

// The answer of a listener to an event. While it answers Possible, all listeners stay candidates.
// With Began, Changed or Ended it claims the gesture, and the other listeners are dropped. With
// Failed it gives up, and the next listener receives the gesture from its first event.
enum class TouchEventListenerState { Possible = 0, Began = 1, Changed = 2, Ended = 3, Failed = 4 };

// One step of a gesture. Locations are in screen coordinates, in points.
struct TouchEvent {
    using listener_type =
        notification::Listener<DisplayObject, TouchEvent, TouchEventListenerState>;

    TouchEventPhase phase = TouchEventPhase::Began;
    geometry::Point<double> location;
    geometry::Point<double> startLocation;
    geometry::Point<double> delta;  // the way from the previous event's location
    std::chrono::system_clock::time_point timestamp;
};

// The base of an application's touch listeners. Register one with
// object->addListener<TouchEvent>(listener); the object holds it weakly, so the application keeps
// it alive. All functions are called on the main thread.
class ORVANE_EXPORT TouchEventListener : public TouchEvent::listener_type {
public:
    // Called when a touch begins on the object, before the first event.
    virtual void reset() {}
    // Called when the gesture that this listener claimed has begun, changed or ended.
    virtual void action() {}
};

}  // namespace events
}  // namespace orvane::display
