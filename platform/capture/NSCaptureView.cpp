#include "platform/capture/NSCaptureView.h"

#include <algorithm>
#include <utility>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

namespace {

void fill(CGContext& canvas, const CGRect& rect, const CGColor& color) {
    canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
    canvas.addRect(rect);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

// The sign of a camera in the middle of the bounds: a case with a finder and a lens.
void drawSign(CGContext& canvas, const CGRect& bounds) {
    constexpr CGColor kGround{0.11, 0.13, 0.15, 1};
    constexpr CGColor kSign{0.42, 0.46, 0.5, 1};
    fill(canvas, bounds, kGround);
    const double unit = std::min({bounds.size.width, bounds.size.height, 240.0}) / 12;
    canvas.saveGState();
    canvas.translateCTM(bounds.size.width / 2, bounds.size.height / 2);
    canvas.scaleCTM(unit, unit);
    const auto draw = [&](const CGColor& color, const auto& outline) {
        CGPath path;
        outline(path);
        canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
        canvas.addPath(path);
        canvas.drawPath(CGPathDrawingMode::Fill);
    };
    draw(kSign, [](CGPath& path) { path.addRoundedRect({{-2.6, -1.6}, {5.2, 3.6}}, 0.6, 0.6); });
    draw(kSign, [](CGPath& path) { path.addRoundedRect({{-1.1, -2.3}, {2.2, 1.6}}, 0.4, 0.4); });
    draw(kGround, [](CGPath& path) { path.addEllipseInRect({{-1.2, -1}, {2.4, 2.4}}); });
    draw(kSign, [](CGPath& path) { path.addEllipseInRect({{-0.75, -0.55}, {1.5, 1.5}}); });
    canvas.restoreGState();
}

}  // namespace

void NSCaptureView::setImage(std::shared_ptr<const CGImage> image) {
    if (image_ == image) {
        return;
    }
    const bool keepsPlace =
        image_ && image && image_->width() == image->width() && image_->height() == image->height();
    image_ = std::move(image);
    setNeedsDisplayInRect(keepsPlace ? imageRect() : bounds());
}

void NSCaptureView::setGravity(Gravity gravity) {
    if (std::exchange(gravity_, gravity) != gravity) {
        setNeedsDisplayInRect(bounds());
    }
}

void NSCaptureView::setMirrored(bool mirrored) {
    if (std::exchange(mirrored_, mirrored) != mirrored) {
        setNeedsDisplayInRect(bounds());
    }
}

void NSCaptureView::setFrame(const CGRect& frame) {
    const bool isResized = frame.size != this->frame().size;
    NSView::setFrame(frame);
    if (isResized) {
        setNeedsDisplayInRect(bounds());
    }
}

CGRect NSCaptureView::imageRect() const {
    const CGSize size = bounds().size;
    const double x = size.width / image_->width();
    const double y = size.height / image_->height();
    const double scale = gravity_ == Gravity::Fit ? std::min(x, y) : std::max(x, y);
    const CGSize scaled{image_->width() * scale, image_->height() * scale};
    return {{(size.width - scaled.width) / 2, (size.height - scaled.height) / 2}, scaled};
}

void NSCaptureView::drawRect(const CGRect&) {
    CGContext* const canvas = NSGraphicsContext::currentGraphicsPort();
    if (canvas == nullptr) {
        return;
    }
    if (!image_) {
        drawSign(*canvas, bounds());
        return;
    }
    CGRect rect = imageRect();
    const CGSize size = bounds().size;
    if (rect.size.width < size.width || rect.size.height < size.height) {
        fill(*canvas, bounds(), {0, 0, 0, 1});
    }
    canvas->saveGState();
    // Images have their y axis up.
    canvas->translateCTM(mirrored_ ? size.width : 0, size.height);
    canvas->scaleCTM(mirrored_ ? -1 : 1, -1);
    canvas->drawImage(rect, *image_);
    canvas->restoreGState();
}

}  // namespace orvane::platform
