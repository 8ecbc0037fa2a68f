#pragma once

#include <string>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What a drag from another program does.
enum class NSDropPhase {
    Over,      // it is over the window, and moves
    Left,      // it has left the window, or was given up; the location has no meaning
    Performed  // the user has released it over the window
};

// A drag from another program. The location is in the coordinates of the window's content: points,
// y down. Over may have no contents yet, as far as the other program delivers them late.
struct NSDrop {
    NSDropPhase phase = NSDropPhase::Over;
    CGPoint locationInWindow;
    std::vector<std::string> files = {};  // absolute paths
    std::string text = {};                // UTF-8
};

}  // namespace orvane::platform
