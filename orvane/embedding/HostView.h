#pragma once

#include "orvane/system/ScreenTypeView.h"
#include "platform/appkit/NSView.h"

namespace orvane::embedding {

// The superview of the display's view, created by Session. Its size decides whether the
// applications see a portrait or a landscape screen; a square screen is landscape.
class HostView final : public platform::NSView, public system::ScreenTypeView {
public:
    int screenType() const override {
        const platform::CGSize size = frame().size;
        return size.height > size.width ? portrait : landscape;
    }
    bool isFlipped() const override { return true; }
    // Keys for which the window has no first responder are for the display.
    bool keyDown(const platform::NSEvent& event) override {
        return !subviews().empty() && subviews().front()->keyDown(event);
    }
    bool keyUp(const platform::NSEvent& event) override {
        return !subviews().empty() && subviews().front()->keyUp(event);
    }
};

}  // namespace orvane::embedding
