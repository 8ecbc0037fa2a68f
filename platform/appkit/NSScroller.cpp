#include "platform/appkit/NSScroller.h"

#include <algorithm>
#include <utility>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSPanGestureRecognizer.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

namespace {

// Between the knob and the edges of its view.
constexpr double kMargin = 3;

}  // namespace

std::shared_ptr<NSScroller> NSScroller::create(Handler handler) {
    auto scroller = std::make_shared<NSScroller>();
    // Where the knob was grasped: its view moves during the drag, and distances in its coordinates
    // would count from there.
    struct Drag {
        CGPoint grasp;
    };
    const auto drag = std::make_shared<Drag>();
    NSPanGestureRecognizer::Handler pan;
    pan.pressed = [drag](CGPoint location, double) {
        drag->grasp = location;
        return NSPanGestureRecognizer::Start::AtOnce;
    };
    pan.shouldBegin = [](CGPoint) { return true; };
    pan.began = [handler] { handler.grasped(true); };
    pan.moved = [handler, drag](CGPoint, CGPoint location) {
        handler.dragged({location.x - drag->grasp.x, location.y - drag->grasp.y});
    };
    pan.ended = [handler](CGPoint, double) { handler.grasped(false); };
    scroller->addGestureRecognizer(std::make_shared<NSPanGestureRecognizer>(std::move(pan)));
    return scroller;
}

void NSScroller::setFrame(const CGRect& frame) {
    const bool isResized = frame.size != bounds().size;
    NSView::setFrame(frame);
    if (isResized) {
        setNeedsDisplayInRect(bounds());
    }
}

void NSScroller::drawRect(const CGRect&) {
    CGContext* const canvas = NSGraphicsContext::currentGraphicsPort();
    const CGSize size = bounds().size;
    const CGRect knob{
        {kMargin, kMargin},
        {std::max(size.width - 2 * kMargin, 0.0), std::max(size.height - 2 * kMargin, 0.0)}};
    if (canvas == nullptr || knob.size.width == 0 || knob.size.height == 0) {
        return;
    }
    const double radius = std::min(knob.size.width, knob.size.height) / 2;
    CGPath outline;
    outline.addRoundedRect(knob, radius, radius);
    // Dark with a light edge, so that it is visible on any content.
    canvas->setRGBFillColor(0.15, 0.15, 0.17, 0.62);
    canvas->setRGBStrokeColor(1, 1, 1, 0.45);
    canvas->setLineWidth(1);
    canvas->addPath(outline);
    canvas->drawPath(CGPathDrawingMode::FillStroke);
}

}  // namespace orvane::platform
