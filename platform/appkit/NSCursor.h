#pragma once

namespace orvane::platform {

// The shapes of the pointer that desktops have.
enum class NSCursor {
    Default,
    Pointer,
    Text,
    Crosshair,
    Move,
    Grab,
    Grabbing,
    NotAllowed,
    Wait,
    ResizeHorizontal,
    ResizeVertical,
    None,
};

}  // namespace orvane::platform
