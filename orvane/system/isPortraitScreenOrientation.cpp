#include "orvane/system/ScreenTypeView.h"
#include "orvane/system/screenView.h"
#include "orvane/system/system.h"
#include "platform/appkit/NSView.h"

namespace orvane::system {

bool isPortraitScreenOrientation() {
    const auto* const screen = dynamic_cast<const ScreenTypeView*>(screenView());
    return screen != nullptr && screen->screenType() == ScreenTypeView::portrait;
}

}  // namespace orvane::system
