#pragma once

#include <cmath>

#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::platform {

// Rounds a length in points to whole pixels of the view's window, so that the compositor copies
// pixels as they are; to whole points for a view in no window.
inline double roundToPixel(double length, const NSView& view) {
    const double scale = view.window() != nullptr ? view.window()->backingScaleFactor() : 1;
    return std::round(length * scale) / scale;
}

}  // namespace orvane::platform
