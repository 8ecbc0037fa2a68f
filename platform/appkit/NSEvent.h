#pragma once

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

enum class NSEventType { LeftMouseDown, LeftMouseDragged, LeftMouseUp };

// A pointer event. The place is in the window's content coordinates, y down, in points.
struct NSEvent {
    NSEventType type = NSEventType::LeftMouseDown;
    CGPoint locationInWindow;
    double timestamp = 0;  // seconds, of the media clock
};

}  // namespace orvane::platform
