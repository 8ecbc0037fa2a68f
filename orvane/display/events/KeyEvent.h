#pragma once

#include <memory>
#include <string>

#include "orvane/display/events/Modifier.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class Display;
class DisplayObject;

namespace events {

// What happened to the key. A key that is held down repeats.
enum class KeyPhase { Down, Repeat, Up };

// A key. It is sent to the object that has the focus and then to its ancestors, the parent first,
// until a listener returns true because it has handled the key; then to the display, in a
// DisplayKeyEvent; and a key that nothing has handled to the display's shortcuts. A native control
// that has the focus takes the keys that it uses, such as the letters typed into a text field:
// listeners see only the others. Main thread.
struct KeyEvent {
    using listener_type = notification::Listener<DisplayObject, KeyEvent, bool>;

    KeyPhase phase = KeyPhase::Down;
    // The name of the key symbol without regard to Shift: "a", "1", "Return", "BackSpace", "Left",
    // "Page_Down", "F5", "space": the names of X11's keysymdef.h without their prefix. Empty for
    // text that an input method enters.
    std::string key;
    // The text that the key enters, in UTF-8; empty if it enters none.
    std::string text;
    unsigned modifiers = 0;  // a set of Modifier bits
};

// A key that no object has handled, sent to the display. A listener returns true if it has handled
// the key.
struct DisplayKeyEvent : KeyEvent {
    using listener_type = notification::Listener<Display, DisplayKeyEvent, bool>;
};

// An object got the focus or lost it. It is sent to that object.
struct FocusEvent {
    using listener_type = notification::Listener<DisplayObject, FocusEvent, void>;

    bool hasFocus = false;
};

// Another object, or none, has the focus. It is sent to the display.
struct FocusChangedEvent {
    using listener_type = notification::Listener<Display, FocusChangedEvent, void>;

    std::shared_ptr<DisplayObject> focus;  // null for none
};

}  // namespace events
}  // namespace orvane::display
