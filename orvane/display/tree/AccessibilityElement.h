#pragma once

#include <string>
#include <utility>

namespace orvane::display {

// What assistive technology is told about a display object. Made on demand by
// DisplayObject::getOrCreateAccessibilityElement.
class AccessibilityElement {
public:
    void setLabel(std::string label) { label_ = std::move(label); }
    const std::string& getLabel() const { return label_; }

private:
    std::string label_;
};

}  // namespace orvane::display
