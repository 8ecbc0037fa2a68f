#include "orvane/embedding/accessibilityLabels.h"

#include <string>
#include <utility>

#include "orvane/display/Display.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/preOrder.h"
#include "platform/appkit/NSControl.h"

namespace orvane::embedding {

std::vector<platform::NSAccessibilityLabel> accessibilityLabels(const display::Display& display) {
    std::vector<platform::NSAccessibilityLabel> labels;
    preOrder(display.getObjects(), childrenOf, [&labels](display::DisplayObject& object, int) {
        std::string label = labelOf(object);
        const auto* const native = dynamic_cast<const display::native::NativeObject*>(&object);
        auto* const control =
            native != nullptr ? dynamic_cast<platform::NSControl*>(native->getObjectHandler().get())
                              : nullptr;
        if (control != nullptr) {
            control->setAccessibilityLabel(label);
        } else if (!label.empty() && object.isVisible()) {
            // What is scrolled out of sight has a place without an extent, and can still be read.
            labels.push_back({std::move(label), platform::CGRect(object.getFrameOnScreen())});
        }
    });
    return labels;
}

}  // namespace orvane::embedding
