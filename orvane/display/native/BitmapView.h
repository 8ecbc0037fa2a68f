#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::display::native {

class BitmapLayer;

// The view behind a bitmap layer: hands each rectangle that the platform wants painted to the
// layer.
class BitmapView final : public platform::NSView {
public:
    // Borrowed; the layer clears it at its end.
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
