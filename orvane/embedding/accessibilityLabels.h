#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSAccessibilityLabel.h"

namespace orvane::display {
class Display;
}

namespace orvane::embedding {

// Returns the accessibility label of each visible object on the display that has one, with the
// object's frame in points of the display, in drawing order. A window exposes them to assistive
// technology: pass this function's result to GTKWindow::setAccessibilityLabels. It visits every
// object. A native control gets its label itself (NSControl::setAccessibilityLabel), because
// assistive technology finds the control, and is not in the list. Main thread only.
ORVANE_EXPORT std::vector<platform::NSAccessibilityLabel> accessibilityLabels(
    const display::Display& display);

}  // namespace orvane::embedding
