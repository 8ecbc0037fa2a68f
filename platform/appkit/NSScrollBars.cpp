#include "platform/appkit/NSScrollBars.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/appkit/NSScroller.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/roundToPixel.h"

namespace orvane::platform {

using enum NSScrollDirection;

namespace {

// How long bars are shown after the last movement, and how long they fade, in seconds.
constexpr double kShown = 1;
constexpr double kFade = 0.3;

}  // namespace

NSScrollBars::NSScrollBars(NSView& view, const NSScrollMotion& motion, const Handler& handler)
    : view_(view), motion_(motion) {
    for (const Direction direction : {Horizontal, Vertical}) {
        NSScroller::Handler bar;
        bar.grasped = handler.grasped;
        bar.dragged = [direction, dragged = handler.dragged](double way) {
            dragged(direction, way);
        };
        bar.paged = [direction, paged = handler.paged](bool isAfter) { paged(direction, isAfter); };
        bar.hovered = [direction, hovered = handler.hovered](bool isOver) {
            hovered(direction, isOver);
        };
        std::shared_ptr<NSScroller>& scroller = bars_[index(direction)];
        scroller = NSScroller::create(direction == Vertical, std::move(bar));
        scroller->setHidden(true);
        view_.addSubview(scroller);
    }
}

NSScrollBars::~NSScrollBars() = default;

double NSScrollBars::trackLength(Direction direction) const {
    const Direction other = direction == Vertical ? Horizontal : Vertical;
    const double corner = motion_.axis(other).limit() > 0 ? NSScroller::kBreadth : 0;
    return std::max(motion_.axis(direction).visible() - corner, 0.0);
}

double NSScrollBars::knobLength(Direction direction) const {
    const double track = trackLength(direction);
    const NSScrollAxis& line = motion_.axis(direction);
    const double share = line.content() > 0 ? line.visible() / line.content() : 1;
    return std::min(std::max(std::round(track * share), NSScroller::kShortest), track);
}

CGRect NSScrollBars::trackFrame(Direction direction) const {
    const CGSize size = view_.bounds().size;
    constexpr double breadth = NSScroller::kBreadth;
    const double length = trackLength(direction);
    return direction == Vertical ? CGRect{{size.width - breadth, 0}, {breadth, length}}
                                 : CGRect{{0, size.height - breadth}, {length, breadth}};
}

void NSScrollBars::place() {
    for (const Direction direction : {Horizontal, Vertical}) {
        const std::shared_ptr<NSScroller>& bar = bars_[index(direction)];
        const NSScrollAxis& line = motion_.axis(direction);
        const bool isShown = areShown_ && line.limit() > 0;
        bar->setHidden(!isShown);
        if (!isShown) {
            continue;
        }
        const double length = knobLength(direction);
        const double start =
            roundToPixel((trackLength(direction) - length) * line.offset() / line.limit(), view_);
        bar->place(trackFrame(direction), start, length, isOpen_[index(direction)]);
    }
}

bool NSScrollBars::isNear(Direction direction, CGPoint point) const {
    const CGRect track = trackFrame(direction);
    return motion_.axis(direction).limit() > 0 && point.x >= track.origin.x &&
           point.y >= track.origin.y && point.x < track.origin.x + track.size.width &&
           point.y < track.origin.y + track.size.height;
}

double NSScrollBars::contentWay(Direction direction, double way) const {
    const double travel = trackLength(direction) - knobLength(direction);
    return travel > 0 ? way / travel * motion_.axis(direction).limit() : 0;
}

bool NSScrollBars::setOpen(Direction direction, bool isOpen, double time) {
    if (std::exchange(isOpen_[index(direction)], isOpen) == isOpen) {
        return false;
    }
    show(time);
    place();
    return true;
}

void NSScrollBars::show(double time) {
    if (motion_.limit() == CGPoint{}) {
        return;
    }
    shownAt_ = time;
    if (!std::exchange(areShown_, true)) {
        place();
    }
    for (const std::shared_ptr<NSScroller>& bar : bars_) {
        bar->layer()->setOpacity(1);
    }
    view_.setNeedsFrames(true);
}

bool NSScrollBars::isFading() const {
    return areShown_ && !isAnyOpen();
}

void NSScrollBars::fade(double time) {
    if (!isFading()) {
        return;
    }
    const double faded = (time - shownAt_ - kShown) / kFade;
    for (const std::shared_ptr<NSScroller>& bar : bars_) {
        bar->layer()->setOpacity(std::clamp(1 - faded, 0.0, 1.0));
    }
    if (faded >= 1) {
        areShown_ = false;
        place();
    }
}

}  // namespace orvane::platform
