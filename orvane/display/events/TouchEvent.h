#pragma once

#include <chrono>
#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace events {

enum class TouchEventPhase { Began = 0, Moved = 1, Ended = 2, Cancelled = 3 };

// A listener's answer to an event. While it answers Possible every listener stays a candidate; with
// Began, Changed or Ended it claims the touch and the others are dropped; with Failed it gives up,
// and the next one is told the gesture from its first event.
enum class TouchEventListenerState { Possible = 0, Began = 1, Changed = 2, Ended = 3, Failed = 4 };

// One step of a gesture. Places are in screen coordinates, in points.
struct TouchEvent {
    using listener_type =
        notification::Listener<DisplayObject, TouchEvent, TouchEventListenerState>;

    TouchEventPhase phase = TouchEventPhase::Began;
    geometry::Point<double> location;
    geometry::Point<double> startLocation;
    geometry::Point<double> delta;  // since the event before
    std::chrono::system_clock::time_point timestamp;
};

// What applications derive from to be touched: register it with
// object->addListener<TouchEvent>(listener) and keep it alive. Called on the main thread.
class ORVANE_EXPORT TouchEventListener : public TouchEvent::listener_type {
public:
    // A touch has come down on the object; events follow.
    virtual void reset() {}
    // The gesture that this listener claimed has begun, changed or ended.
    virtual void action() {}
};

}  // namespace events
}  // namespace orvane::display
