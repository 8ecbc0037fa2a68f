#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::display::native {

class BitmapLayer;

// The view of a bitmap layer. The window calls drawRect for each damaged rectangle, and the view
// has its layer paint it. Main thread.
class BitmapView final : public platform::NSView {
public:
    // The layer is borrowed; its destructor sets null. Without a layer nothing is painted.
    void setOrvaneLayer(BitmapLayer* layer) { orvaneLayer_ = layer; }

    bool isFlipped() const override { return true; }
    bool isOpaque() const override { return false; }
    bool paints() const override { return true; }
    void viewDidMoveToWindow() override;
    void drawRect(const platform::CGRect& dirty) override;

private:
    BitmapLayer* orvaneLayer_ = nullptr;
};

}  // namespace orvane::display::native
