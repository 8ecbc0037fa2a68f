#include "platform/gtk/GTKControl.h"

#include <gtkmm/widget.h>

#include <map>
#include <string_view>
#include <utility>

#include "platform/appkit/NSTextField.h"
#include "platform/foundation/NSLog.h"
#include "platform/gtk/GTKTextField.h"
#include "platform/gtk/GTKWrappers.h"

namespace orvane::platform {

namespace {

using Kinds = std::map<std::string, GTKControl::Create, std::less<>>;

Kinds& kinds() {
    static Kinds kinds{{std::string(NSTextField::kKind), [](NSControl& control) {
                            auto* const field = dynamic_cast<NSTextField*>(&control);
                            return field != nullptr ? GTKTextField::create(*field) : nullptr;
                        }}};
    return kinds;
}

}  // namespace

GTKControl::~GTKControl() = default;

void GTKControl::grabFocus() {
    widget().grab_focus();
}

bool GTKControl::registerKind(const std::string& kind, Create create) {
    if (kind.empty() || !create || !kinds().emplace(kind, std::move(create)).second) {
        NSLog("GTKControl: the kind '%s' was refused: it needs a name, a function, and to be new",
              kind.c_str());
        return false;
    }
    return true;
}

bool GTKControl::isRegistered(const NSView& view) {
    const auto* const control = dynamic_cast<const NSControl*>(&view);
    return control != nullptr && kinds().contains(control->controlKind());
}

std::unique_ptr<GTKControl> GTKControl::create(NSView& view) {
    auto* const control = dynamic_cast<NSControl*>(&view);
    if (control == nullptr) {
        return nullptr;
    }
    const auto kind = kinds().find(control->controlKind());
    if (kind == kinds().end()) {
        return nullptr;
    }
    registerAllWrappers();
    return kind->second(*control);
}

}  // namespace orvane::platform
