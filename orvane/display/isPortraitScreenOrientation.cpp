#include "orvane/display/Display.h"
#include "orvane/display/DisplayView.h"
#include "orvane/system/ScreenType.h"
#include "orvane/system/system.h"

namespace orvane::system {

bool isPortraitScreenOrientation() {
    const platform::NSView* const superview = display::Display::instance()->getView()->superview();
    const auto* const screen = dynamic_cast<const ScreenTypeView*>(superview);
    return screen != nullptr && screen->screenType() == ScreenTypeView::portrait;
}

}  // namespace orvane::system
