#include "platform/gtk/GTKControl.h"

#include <gtkmm/widget.h>

#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "orvane/services/families.h"
#include "platform/appkit/NSTextField.h"
#include "platform/foundation/LibraryFunctions.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/runtimeLibrary.h"
#include "platform/gtk/GTKRenderer.h"
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

// A library with the widgets for a kind of controls. It is opened when a window shows the first
// such control, because it loads many other libraries.
struct WidgetLibrary {
    std::string_view kind;
    services::Family family;
    const char* file;
    const char* function;  // registers the kind
    const char* consequence;
    bool wasOpened = false;
};

std::array libraries{
    WidgetLibrary{"Map", services::Family::Map, "liborvane-map.so." ORVANE_VERSION_MAJOR,
                  "orvane_register_map", "A map is not shown"},
    WidgetLibrary{"Web", services::Family::Web, "liborvane-web.so." ORVANE_VERSION_MAJOR,
                  "orvane_register_web", "A web page is not shown"},
};

// Returns what creates the widgets for a kind of controls, or null if the controls paint
// themselves.
const GTKControl::Create* find(std::string_view kind) {
    const auto registered = kinds().find(kind);
    if (registered != kinds().end()) {
        return &registered->second;
    }
    for (WidgetLibrary& library : libraries) {
        if (library.kind != kind || std::exchange(library.wasOpened, true)) {
            continue;
        }
        if (services::isFamilyDenied(library.family)) {
            NSLog("%s: the host denies it", library.consequence);
            continue;
        }
        const std::string path = runtimeLibrary(library.file);
        LibraryFunctions functions(path.c_str(), library.consequence);
        void (*registerKind)() = nullptr;
        functions.find(registerKind, library.function);
        if (functions.isComplete()) {
            registerKind();
            return find(kind);
        }
    }
    return nullptr;
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
    return control != nullptr && isKindRegistered(control->controlKind());
}

bool GTKControl::isKindRegistered(std::string_view kind) {
    return find(kind) != nullptr;
}

bool GTKControl::hasHardwareGL() {
    return platform::hasHardwareGL(*gdk_display_get_default());
}

std::unique_ptr<GTKControl> GTKControl::create(NSView& view) {
    auto* const control = dynamic_cast<NSControl*>(&view);
    if (control == nullptr) {
        return nullptr;
    }
    const Create* const create = find(control->controlKind());
    if (create == nullptr) {
        return nullptr;
    }
    registerAllWrappers();
    return (*create)(*control);
}

}  // namespace orvane::platform
