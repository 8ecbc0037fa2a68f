#pragma once

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What a pointer event reports about the left button.
enum class NSEventType {
    LeftMouseDown,
    LeftMouseDragged,
    LeftMouseUp,
    // The desktop withdrew the pointer before the button was released. The location has no meaning.
    MouseCancelled,
};

// A pointer event. The location is in the coordinates of the window's content: points, y down.
struct NSEvent {
    NSEventType type = NSEventType::LeftMouseDown;
    CGPoint locationInWindow;
    double timestamp = 0;  // in seconds of the media clock
};

}  // namespace orvane::platform
