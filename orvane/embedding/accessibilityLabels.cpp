#include "orvane/embedding/accessibilityLabels.h"

#include "orvane/display/Display.h"
#include "orvane/display/tree/AccessibilityElement.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/preOrder.h"

namespace orvane::embedding {

std::vector<platform::NSAccessibilityLabel> accessibilityLabels(const display::Display& display) {
    std::vector<platform::NSAccessibilityLabel> labels;
    preOrder(display.getObjects(), childrenOf, [&labels](display::DisplayObject& object, int) {
        const auto element = object.getAccessibilityElement();
        if (element && !element->getLabel().empty() && object.isVisible()) {
            labels.push_back({element->getLabel(), platform::CGRect(object.getFrame())});
        }
    });
    return labels;
}

}  // namespace orvane::embedding
