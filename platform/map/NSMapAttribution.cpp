#include "platform/map/NSMapAttribution.h"

#include <algorithm>
#include <cmath>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSTextLayout.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::platform {

namespace {

constexpr double kTextSize = 10.5;
constexpr double kMarginX = 6;
constexpr double kMarginY = 2;
constexpr CGColor kTextColor{0.2, 0.24, 0.28, 1};
constexpr double kGroundOpacity = 0.78;

}  // namespace

NSMapAttribution::NSMapAttribution() {
    setHidden(true);
    // In front of the views for the markers.
    layer()->setZPosition(1);
}

NSMapAttribution::~NSMapAttribution() = default;

void NSMapAttribution::setText(const std::string& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    NSTextFieldStyle style;
    style.fontSize = kTextSize;
    style.textColor = kTextColor;
    layout_ = std::make_unique<NSTextLayout>(NSTextLayout::Kind::Line, text, style, true, 0);
    setHidden(text.empty());
    setNeedsDisplayInRect(bounds());
}

void NSMapAttribution::placeIn(CGSize map) {
    if (!layout_) {
        return;
    }
    // The beginning of a text that is too long stays visible.
    const CGSize text = layout_->size();
    const double width = std::min(std::ceil(text.width) + 2 * kMarginX, map.width);
    const double height = std::ceil(text.height) + 2 * kMarginY;
    setFrame({{map.width - width, map.height - height}, {width, height}});
}

void NSMapAttribution::drawRect(const CGRect&) {
    CGContext* const canvas = NSGraphicsContext::currentGraphicsPort();
    if (canvas == nullptr || !layout_) {
        return;
    }
    canvas->setRGBFillColor(1, 1, 1, kGroundOpacity);
    canvas->addRect(bounds());
    canvas->drawPath(CGPathDrawingMode::Fill);
    canvas->translateCTM(kMarginX, kMarginY);
    layout_->draw(*canvas, 0, bounds().size.height);
}

}  // namespace orvane::platform
