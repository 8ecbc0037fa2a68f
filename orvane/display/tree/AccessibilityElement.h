#pragma once

#include <string>
#include <utility>

namespace orvane::display {

// What assistive technology learns about a display object. DisplayObject creates and owns it; see
// DisplayObject::getOrCreateAccessibilityElement. Application's thread.
class AccessibilityElement {
public:
    // The name that a screen reader speaks; empty for none.
    void setLabel(std::string label) { label_ = std::move(label); }
    const std::string& getLabel() const { return label_; }

private:
    std::string label_;
};

}  // namespace orvane::display
