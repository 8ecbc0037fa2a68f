#pragma once

#include <string>
#include <vector>

#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace events {

// What a drag from another program does.
enum class DropPhase {
    Over,  // it is over the object, and moves: a listener returns whether it would take it
    Left,  // it is no longer over the object that would take it, or the user gave it up
    Drop   // the user released it here
};

// Files or a text that the user drags here from another program. Over and Drop are sent to the
// topmost object under the pointer that has a listener, and then to its ancestors, the parent
// first, until a listener returns true because it takes them. Left is sent to the object that would
// have taken the drag; the result does not matter. Main thread.
struct DropEvent {
    using listener_type = notification::Listener<DisplayObject, DropEvent, bool>;

    DropPhase phase = DropPhase::Over;
    // In screen coordinates, in points, like that of a PointerEvent.
    geometry::Point<double> location;
    // Absolute paths. They and the text may be empty while the drag is over an object, and are
    // complete when it is dropped.
    std::vector<std::string> files;
    std::string text;  // UTF-8
};

}  // namespace events
}  // namespace orvane::display
