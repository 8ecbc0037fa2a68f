#include "platform/appkit/NSControl.h"

namespace orvane::platform {

void NSControl::setAccessibilityLabel(const std::string& label) {
    if (accessibilityLabel_ != label) {
        accessibilityLabel_ = label;
        stateDidChange();
    }
}

}  // namespace orvane::platform
