#pragma once

#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A text that a window exposes to assistive technology, and the area of the window that the text
// describes, in points.
struct NSAccessibilityLabel {
    std::string text;
    CGRect frame;
};

}  // namespace orvane::platform
