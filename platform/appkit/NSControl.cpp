#include "platform/appkit/NSControl.h"

namespace orvane::platform {

namespace {

bool (*widgetSource)(std::string_view kind) = nullptr;

}  // namespace

bool NSControl::hasWidgets(std::string_view kind) {
    return widgetSource != nullptr && widgetSource(kind);
}

void NSControl::setWidgetSource(bool (*hasWidgets)(std::string_view kind)) {
    widgetSource = hasWidgets;
}

void NSControl::setAccessibilityLabel(const std::string& label) {
    if (accessibilityLabel_ != label) {
        accessibilityLabel_ = label;
        stateDidChange();
    }
}

}  // namespace orvane::platform
