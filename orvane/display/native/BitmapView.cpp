#include "orvane/display/native/BitmapView.h"

#include <cmath>

#include "orvane/display/native/BitmapLayer.h"
#include "orvane/display/native/CurrentCanvas.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::display::native {

namespace {

class CurrentCanvasScope {
public:
    explicit CurrentCanvasScope(platform::CGContext* canvas) { SetCurrentCanvas(canvas); }
    ~CurrentCanvasScope() { SetCurrentCanvas(nullptr); }
    CurrentCanvasScope(const CurrentCanvasScope&) = delete;
    CurrentCanvasScope& operator=(const CurrentCanvasScope&) = delete;
};

}  // namespace

void BitmapView::viewDidMoveToWindow() {
    NSView::viewDidMoveToWindow();
    if (layer() != nullptr) {
        layer()->setOpaque(false);
    }
}

void BitmapView::drawRect(const platform::CGRect& dirty) {
    if (window() == nullptr || orvaneLayer_ == nullptr) {
        return;
    }
    const geometry::Rect<double> rect(dirty.origin.x, dirty.origin.y, std::ceil(dirty.size.width),
                                      std::ceil(dirty.size.height));
    const CurrentCanvasScope scope(platform::NSGraphicsContext::currentGraphicsPort());
    // Held: an object that owns the layer may be removed while it is painted.
    const std::shared_ptr<BitmapLayer> layer = commons::sharedFrom(*orvaneLayer_);
    layer->drawToBuffer(rect, nullptr);
}

}  // namespace orvane::display::native
