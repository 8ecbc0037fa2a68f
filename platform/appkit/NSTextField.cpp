#include "platform/appkit/NSTextField.h"

#include <algorithm>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::platform {

void NSTextField::setStringValue(const std::string& value) {
    if (stringValue_ != value) {
        stringValue_ = value;
        setNeedsDisplayInRect(bounds());
        stateDidChange();
    }
}

void NSTextField::setEnabled(bool enabled) {
    if (enabled_ != enabled) {
        enabled_ = enabled;
        setNeedsDisplayInRect(bounds());
        stateDidChange();
    }
}

void NSTextField::drawRect(const CGRect&) {
    CGContext* canvas = NSGraphicsContext::currentGraphicsPort();
    if (!canvas) {
        return;
    }
    const CGSize size = bounds().size;
    const double shade = enabled_ ? 1.0 : 0.94;
    canvas->setRGBFillColor(shade, shade, shade, 1);
    canvas->addRect(bounds());
    canvas->drawPath(CGPathDrawingMode::Fill);
    canvas->setRGBStrokeColor(0.6, 0.6, 0.62, 1);
    canvas->setLineWidth(1);
    canvas->addRect({{0.5, 0.5}, {std::max(size.width - 1, 0.0), std::max(size.height - 1, 0.0)}});
    canvas->strokePath();
}

}  // namespace orvane::platform
