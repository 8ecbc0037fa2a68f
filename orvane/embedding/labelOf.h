#pragma once

#include <string>

#include "orvane/display/tree/AccessibilityElement.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::embedding {

// Returns the accessibility label of an object; empty for none.
inline std::string labelOf(const display::DisplayObject& object) {
    const auto element = object.getAccessibilityElement();
    return element ? element->getLabel() : std::string();
}

}  // namespace orvane::embedding
