#include "platform/appkit/NSScroller.h"

#include <algorithm>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

namespace {

// Between the knob and the edges of its part of the view: the knob of an open bar is broader.
constexpr double kMargin = 3;
constexpr double kOpenMargin = 2;

}  // namespace

std::shared_ptr<NSScroller> NSScroller::create(bool isVertical, Handler handler) {
    auto scroller = std::make_shared<NSScroller>();
    scroller->isVertical_ = isVertical;
    scroller->handler_ = std::move(handler);
    return scroller;
}

void NSScroller::place(const CGRect& track, double start, double length, bool isOpen) {
    const CGRect inTrack = isVertical_ ? CGRect{{0, start}, {track.size.width, length}}
                                       : CGRect{{start, 0}, {length, track.size.height}};
    const CGRect frame =
        isOpen ? track
               : CGRect{{track.origin.x + inTrack.origin.x, track.origin.y + inTrack.origin.y},
                        inTrack.size};
    const CGRect knob = isOpen ? inTrack : CGRect{{0, 0}, inTrack.size};
    const bool isChanged = frame.size != bounds().size || knob != knob_ || isOpen != isOpen_;
    isOpen_ = isOpen;
    knob_ = knob;
    setFrame(frame);
    if (isChanged) {
        setNeedsDisplayInRect(bounds());
    }
}

void NSScroller::drawRect(const CGRect&) {
    CGContext* const canvas = NSGraphicsContext::currentGraphicsPort();
    if (canvas == nullptr) {
        return;
    }
    if (isOpen_) {
        canvas->setRGBFillColor(0.92, 0.92, 0.93, 0.9);
        canvas->addRect(bounds());
        canvas->drawPath(CGPathDrawingMode::Fill);
    }
    const double margin = isOpen_ ? kOpenMargin : kMargin;
    const CGRect knob{{knob_.origin.x + margin, knob_.origin.y + margin},
                      {std::max(knob_.size.width - 2 * margin, 0.0),
                       std::max(knob_.size.height - 2 * margin, 0.0)}};
    if (knob.size.width == 0 || knob.size.height == 0) {
        return;
    }
    const double radius = std::min(knob.size.width, knob.size.height) / 2;
    CGPath outline;
    outline.addRoundedRect(knob, radius, radius);
    // Dark with a light edge, so that it is visible on any content.
    canvas->setRGBFillColor(0.15, 0.15, 0.17, isHeld_ ? 0.8 : 0.62);
    canvas->setRGBStrokeColor(1, 1, 1, 0.45);
    canvas->setLineWidth(1);
    canvas->addPath(outline);
    canvas->drawPath(CGPathDrawingMode::FillStroke);
}

// The view of a closed bar moves with the knob: where the knob is held is all that counts.
bool NSScroller::pointerEvent(const NSEvent& event) {
    const std::shared_ptr<NSView> self = shared_from_this();
    switch (event.type) {
        case NSEventType::LeftMouseDown:
            return press(along(convertPointFromWindow(event.locationInWindow)));
        case NSEventType::LeftMouseDragged:
            if (isHeld_) {
                const double place = along(convertPointFromWindow(event.locationInWindow));
                handler_.dragged(place - grasp_ - along(knob_.origin));
            }
            return true;
        case NSEventType::LeftMouseUp:
        case NSEventType::MouseCancelled:
            release();
            return true;
        case NSEventType::MouseMoved:
            handler_.hovered(true);
            return false;  // the views behind the bar learn where the pointer is
        case NSEventType::MouseExited:
            handler_.hovered(false);
            return false;
        default:
            return false;
    }
}

bool NSScroller::press(double place) {
    const double start = along(knob_.origin);
    const double length = isVertical_ ? knob_.size.height : knob_.size.width;
    if (place < start || place >= start + length) {
        handler_.paged(place >= start);
        return true;
    }
    isHeld_ = true;
    grasp_ = place - start;
    setNeedsDisplayInRect(bounds());
    handler_.grasped(true);
    return true;
}

void NSScroller::release() {
    if (std::exchange(isHeld_, false)) {
        setNeedsDisplayInRect(bounds());
        handler_.grasped(false);
    }
}

}  // namespace orvane::platform
