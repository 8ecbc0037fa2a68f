#include "orvane/commons/Export.h"
#include "platform/gtk/GTKControl.h"
#include "platform/gtk/map/GTKMap.h"
#include "platform/map/NSMapView.h"

// Makes windows show maps with the desktop's library. Called once, when a window shows the first.
extern "C" ORVANE_EXPORT void orvane_register_map() {
    using namespace orvane::platform;
    GTKControl::registerKind(std::string(NSMapView::kKind),
                             [](NSControl& control) -> std::unique_ptr<GTKControl> {
                                 auto* const map = dynamic_cast<NSMapView*>(&control);
                                 return map != nullptr ? std::make_unique<GTKMap>(*map) : nullptr;
                             });
}
