#pragma once

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What the pointer did: its button went down, it moved with the button down, the button went up.
enum class NSEventType { LeftMouseDown, LeftMouseDragged, LeftMouseUp };

// A pointer event. The location is in the coordinates of the window's content: points, y down.
struct NSEvent {
    NSEventType type = NSEventType::LeftMouseDown;
    CGPoint locationInWindow;
    double timestamp = 0;  // in seconds of the media clock
};

}  // namespace orvane::platform
