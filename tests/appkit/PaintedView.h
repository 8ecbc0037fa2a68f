#pragma once

#include <vector>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

// A view that paints an ellipse on a translucent background, and records each call of drawRect.
class PaintedView final : public NSView {
public:
    explicit PaintedView(const CGRect& frame, const CGColor& color = {1, 0, 0, 1}) : color_(color) {
        setFrame(frame);
    }

    bool paints() const override { return true; }
    void drawRect(const CGRect& dirty) override {
        drawn.push_back(dirty);
        CGContext& canvas = *NSGraphicsContext::currentGraphicsPort();
        canvas.setRGBFillColor(color_.red, color_.green, color_.blue, color_.alpha / 2);
        canvas.addRect(bounds());
        canvas.drawPath(CGPathDrawingMode::Fill);
        canvas.setRGBFillColor(color_.red, color_.green, color_.blue, color_.alpha);
        CGPath ellipse;
        ellipse.addEllipseInRect(bounds());
        canvas.addPath(ellipse);
        canvas.drawPath(CGPathDrawingMode::Fill);
    }

    void setColor(const CGColor& color) {
        color_ = color;
        setNeedsDisplayInRect(bounds());
    }

    std::vector<CGRect> drawn;

private:
    CGColor color_;
};

}  // namespace orvane::platform
