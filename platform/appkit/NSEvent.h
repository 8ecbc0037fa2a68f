#pragma once

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

enum class NSEventType { LeftMouseDown, LeftMouseDragged, LeftMouseUp };

// A pointer event. The location is in the coordinates of the window's content: points, y down.
struct NSEvent {
    NSEventType type = NSEventType::LeftMouseDown;
    CGPoint locationInWindow;
    double timestamp = 0;  // in seconds of the media clock
};

}  // namespace orvane::platform
