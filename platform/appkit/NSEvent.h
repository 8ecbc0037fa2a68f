#pragma once

#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What an event reports.
enum class NSEventType {
    // The left button:
    LeftMouseDown,
    LeftMouseDragged,
    LeftMouseUp,
    // Another button; see NSEvent::buttonNumber.
    OtherMouseDown,
    OtherMouseUp,
    // The pointer moved while the left button was up.
    MouseMoved,
    // The pointer left the view that gets the event. The location has no meaning.
    MouseExited,
    // The desktop withdrew the pointer before the button was released. The location has no meaning.
    MouseCancelled,
    // A wheel, or fingers on a touchpad.
    ScrollWheel,
    // The keyboard. Key events have no location.
    KeyDown,
    KeyUp,
};

// The modifier keys that are held down: a set of bits.
enum NSEventModifierFlags : unsigned {
    kNSEventModifierShift = 1U << 0,
    kNSEventModifierControl = 1U << 1,
    kNSEventModifierAlt = 1U << 2,
    kNSEventModifierSuper = 1U << 3,
};

// The part of a touchpad gesture that a scroll event reports. A wheel has no phases.
enum class NSEventPhase { None, Began, Changed, Ended };

// A pointer, scroll or key event. The location is in the coordinates of the window's content:
// points, y down.
struct NSEvent {
    NSEventType type = NSEventType::LeftMouseDown;
    CGPoint locationInWindow;
    double timestamp = 0;        // in seconds of the media clock
    unsigned modifierFlags = 0;  // a set of NSEventModifierFlags

    // ---- OtherMouseDown, OtherMouseUp ----
    int buttonNumber = 0;  // 0 left, 1 right, 2 middle, 3 back, 4 forward
    // ---- presses and releases ----
    // Set by the window: 1 for a single click, 2 for the second press of a double click, and so on.
    int clickCount = 0;

    // ---- ScrollWheel ----
    // How far to scroll, in points. Positive values scroll toward the right and the bottom of the
    // content, so the content moves left and up.
    CGPoint scrollingDelta = {};
    // Whether the delta follows the fingers exactly, as on a touchpad. Otherwise it is a multiple
    // of a wheel's notch, kNSScrollNotch.
    bool hasPreciseScrollingDeltas = false;
    NSEventPhase phase = NSEventPhase::None;

    // ---- KeyDown, KeyUp ----
    // The name of the key symbol without regard to Shift, for example "a", "Left", "Return",
    // "BackSpace", "Page_Down": a name of X11's keysymdef.h without its prefix. Empty if text was
    // entered without a key, for example by an input method.
    std::string key = {};
    // The text that the key enters, in UTF-8; empty for a key that enters none and while Control,
    // Alt or Super is held down.
    std::string characters = {};
    bool isARepeat = false;
};

// How far one notch of a wheel scrolls, in points.
constexpr double kNSScrollNotch = 48;

}  // namespace orvane::platform
