#include "host/accessibilityLabels.h"

#include "host/childrenOf.h"
#include "host/preOrder.h"
#include "orvane/display/AccessibilityElement.h"
#include "orvane/display/Display.h"

namespace orvane::host {

std::vector<platform::GTKWindow::Label> accessibilityLabels(const display::Display& display) {
    std::vector<platform::GTKWindow::Label> labels;
    preOrder(display.getObjects(), childrenOf, [&labels](display::DisplayObject& object, int) {
        const auto element = object.getAccessibilityElement();
        if (element && !element->getLabel().empty() && object.isVisible()) {
            labels.push_back({element->getLabel(), platform::CGRect(object.getFrame())});
        }
    });
    return labels;
}

}  // namespace orvane::host
