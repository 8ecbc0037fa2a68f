#pragma once

namespace orvane::display {

// The shape of the pointer. Inherit means the shape of the parent.
enum class Cursor : unsigned char {
    Inherit,
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

}  // namespace orvane::display
