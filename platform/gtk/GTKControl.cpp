#include "platform/gtk/GTKControl.h"

#include "platform/appkit/NSTextField.h"
#include "platform/gtk/GTKTextField.h"

namespace orvane::platform {

bool GTKControl::realizes(const NSView& view) {
    return dynamic_cast<const NSTextField*>(&view) != nullptr;
}

std::unique_ptr<GTKControl> GTKControl::create(NSView& view) {
    if (auto* const field = dynamic_cast<NSTextField*>(&view)) {
        return std::make_unique<GTKTextField>(*field);
    }
    return nullptr;
}

}  // namespace orvane::platform
