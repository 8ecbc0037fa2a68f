#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSAccessibilityLabel.h"

namespace orvane::display {
class Display;
}

namespace orvane::embedding {

// The labels of the visible objects on a display, with their frames, in drawing order.
ORVANE_EXPORT std::vector<platform::NSAccessibilityLabel> accessibilityLabels(
    const display::Display& display);

}  // namespace orvane::embedding
