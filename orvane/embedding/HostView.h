#pragma once

#include "orvane/system/ScreenType.h"
#include "platform/appkit/NSView.h"

namespace orvane::embedding {

// The view around the display's view: it knows which way the screen lies.
class HostView final : public platform::NSView, public system::ScreenTypeView {
public:
    // A square screen counts as landscape.
    int screenType() const override {
        const platform::CGSize size = frame().size;
        return size.height > size.width ? portrait : landscape;
    }
    bool isFlipped() const override { return true; }
};

}  // namespace orvane::embedding
