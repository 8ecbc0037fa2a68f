#pragma once

#include "orvane/display/events/Modifier.h"
#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace events {

// The button of a PointerEvent. Back and Forward are the side buttons of a mouse.
enum class PointerButton { None, Left, Middle, Right, Back, Forward };

// What the pointer does.
enum class PointerPhase {
    // The pointer is over the object, or is no longer. Sent to each object once; the
    // listener's result is ignored. An object contains its descendants.
    Enter,
    Leave,
    // The pointer moved.
    Move,
    // A button was pressed or released.
    Down,
    Up,
    // The desktop withdrew the pointer: there will be no Up. Sent to the object that handled the
    // Down.
    Cancel,
};

// A movement or a button of the pointer. It is sent to the topmost object under the pointer and
// then to its ancestors, the parent first, until a listener returns true because it has handled
// the event. An object that paints is under the pointer if the pointer is in its frame; a container
// is if one of its children is, or if it has a listener itself and the pointer is in its frame.
//
// The object that handles a Down gets all further movements of the pointer, and the Up of that
// button, wherever the pointer is. Pointer listeners are called before touch listeners: touch
// listeners do not learn of a press of the left button that a pointer listener has handled. While a
// touch listener has a gesture, pointer listeners see only its Up.
//
// Objects that appear under a pointer that rests are entered when it moves. Main thread.
struct PointerEvent {
    using listener_type = notification::Listener<DisplayObject, PointerEvent, bool>;

    PointerPhase phase = PointerPhase::Move;
    // In screen coordinates, in points; for an object in a scroll container, as if the content were
    // not scrolled, like frames.
    geometry::Point<double> location;
    PointerButton button = PointerButton::None;  // of Down and Up
    // Of Down and Up: 1 for a single click, 2 for the second press of a double click, and so on.
    int clickCount = 0;
    unsigned modifiers = 0;  // a set of Modifier bits
};

// A wheel, or fingers on a touchpad. It is sent to the topmost object under the pointer that has a
// listener, and then to its ancestors, the parent first, until a listener returns true because it
// has handled the event. A scroll container takes what it can use before objects around it, and
// after objects inside it. Main thread.
struct ScrollEvent {
    using listener_type = notification::Listener<DisplayObject, ScrollEvent, bool>;

    geometry::Point<double> location;  // as that of a PointerEvent
    // How far to scroll, in points, toward the right and the bottom of the content.
    geometry::Point<double> delta;
    bool isPrecise = false;  // from a touchpad; otherwise notches of a wheel
    unsigned modifiers = 0;  // a set of Modifier bits
};

}  // namespace events
}  // namespace orvane::display
