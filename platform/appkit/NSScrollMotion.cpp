#include "platform/appkit/NSScrollMotion.h"

#include <algorithm>
#include <cmath>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

using enum NSScrollDirection;

namespace {

using Pace = NSScrollAxis::Pace;

// A page of the keyboard leaves so much of the previous one visible.
constexpr double kPageShare = 0.875;
// Slower than this, in points per second, the content stays where it is released; with paging, it
// goes back to the nearest page.
constexpr double kLeastFling = 60;
constexpr double kPageFling = 250;

}  // namespace

// ---- the extents ----

bool NSScrollMotion::setLengths(CGSize content, CGSize visible) {
    const bool moved = axis(Horizontal).setLengths(content.width, visible.width);
    return axis(Vertical).setLengths(content.height, visible.height) || moved;
}

bool NSScrollMotion::setEnabled(bool horizontally, bool vertically) {
    const bool moved = axis(Horizontal).setEnabled(horizontally);
    return axis(Vertical).setEnabled(vertically) || moved;
}

void NSScrollMotion::insertBefore(CGSize extent) {
    axis(Horizontal).insertBefore(extent.width);
    axis(Vertical).insertBefore(extent.height);
}

// ---- the offset ----

CGPoint NSScrollMotion::offset() const {
    return {axis(Horizontal).offset(), axis(Vertical).offset()};
}

CGPoint NSScrollMotion::limit() const {
    return {axis(Horizontal).limit(), axis(Vertical).limit()};
}

CGPoint NSScrollMotion::target() const {
    return {axis(Horizontal).target(), axis(Vertical).target()};
}

CGPoint NSScrollMotion::offsetToShow(const CGRect& rect) const {
    const auto shown = [this](Direction direction, double start, double length) {
        const double from = axis(direction).target();
        const double room = axis(direction).visible() - length;
        return std::min(std::max(from, start - std::max(room, 0.0)), start);
    };
    return {shown(Horizontal, rect.origin.x, rect.size.width),
            shown(Vertical, rect.origin.y, rect.size.height)};
}

CGPoint NSScrollMotion::targetPages() const {
    return {axis(Horizontal).pageAt(axis(Horizontal).target()),
            axis(Vertical).pageAt(axis(Vertical).target())};
}

CGPoint NSScrollMotion::offsetOfPages(CGPoint pages) const {
    return {axis(Horizontal).pageOffset(pages.x), axis(Vertical).pageOffset(pages.y)};
}

// ---- motion ----

bool NSScrollMotion::isMoving() const {
    return axis(Horizontal).isMoving() || axis(Vertical).isMoving();
}

bool NSScrollMotion::isFlung() const {
    return axis(Horizontal).isFlung() || axis(Vertical).isFlung();
}

void NSScrollMotion::stop() {
    axis(Horizontal).stop();
    axis(Vertical).stop();
}

void NSScrollMotion::step(double time) {
    axis(Horizontal).step(time);
    axis(Vertical).step(time);
}

void NSScrollMotion::jumpTo(CGPoint offset) {
    axis(Horizontal).jumpTo(offset.x);
    axis(Vertical).jumpTo(offset.y);
}

void NSScrollMotion::glideTo(CGPoint offset, double time) {
    axis(Horizontal).glideTo(offset.x, time, Pace::Gentle);
    axis(Vertical).glideTo(offset.y, time, Pace::Gentle);
}

CGPoint NSScrollMotion::moveBy(CGPoint delta) {
    const CGPoint before = offset();
    if (delta.x != 0) {
        axis(Horizontal).jumpTo(before.x + delta.x);
    }
    if (delta.y != 0) {
        axis(Vertical).jumpTo(before.y + delta.y);
    }
    const CGPoint after = offset();
    return {after.x - before.x, after.y - before.y};
}

CGPoint NSScrollMotion::moveByWheel(CGPoint delta, double time) {
    const auto moved = [this, time](Direction direction, double by) {
        if (by == 0 || !axis(direction).canMove(by)) {
            return 0.0;
        }
        if (paging_) {
            return turnPageByWheel(direction, by, time);
        }
        const double from = axis(direction).target();
        axis(direction).glideTo(from + by, time, Pace::Quick);
        return axis(direction).target() - from;
    };
    return {moved(Horizontal, delta.x), moved(Vertical, delta.y)};
}

// Further notches count when the page that was turned to has mostly appeared.
double NSScrollMotion::turnPageByWheel(Direction direction, double delta, double time) {
    NSScrollAxis& line = axis(direction);
    double& turned = wheel_[index(direction)];
    if (std::abs(line.target() - line.offset()) > line.visible() / 4) {
        turned = 0;
        return delta;
    }
    turned = turned * delta < 0 ? delta : turned + delta;
    if (std::abs(turned) >= kNSScrollNotch * 0.99) {
        turnPage(direction, turned > 0, time);
        turned = 0;
    }
    return delta;
}

bool NSScrollMotion::moveByKey(std::string_view key, bool isShift, double time) {
    if (key.starts_with("KP_")) {
        key.remove_prefix(3);
    }
    // Pages, and the two ends, are those of the direction in which the content is read.
    const Direction along =
        axis(Vertical).limit() > 0 || axis(Horizontal).limit() <= 0 ? Vertical : Horizontal;
    constexpr double toTheEnd = 1e18;
    struct Way {
        Direction direction;
        double distance;
    };
    const auto wayOf = [&]() -> Way {
        const double page = axis(along).visible() * kPageShare;
        if (key == "Left" || key == "Right") {
            return {Horizontal, key == "Left" ? -kNSScrollNotch : kNSScrollNotch};
        }
        if (key == "Up" || key == "Down") {
            return {Vertical, key == "Up" ? -kNSScrollNotch : kNSScrollNotch};
        }
        if (key == "Page_Up" || key == "Prior" || (key == "space" && isShift)) {
            return {along, -page};
        }
        if (key == "Page_Down" || key == "Next" || key == "space") {
            return {along, page};
        }
        if (key == "Home") {
            return {along, -toTheEnd};
        }
        return {along, key == "End" ? toTheEnd : 0};
    };
    const auto [direction, distance] = wayOf();
    NSScrollAxis& line = axis(direction);
    if (distance == 0 || !line.canMove(distance)) {
        return false;
    }
    if (paging_ && std::abs(distance) < toTheEnd) {
        turnPage(direction, distance > 0, time);
    } else {
        line.glideTo(line.target() + distance, time, Pace::Quick);
    }
    return true;
}

void NSScrollMotion::turnPage(Direction direction, bool forward, double time) {
    NSScrollAxis& line = axis(direction);
    const double way = forward ? 1 : -1;
    if (paging_) {
        line.glideTo(line.pageOffset(line.pageAt(line.target()) + way), time, Pace::Gentle);
    } else {
        line.glideTo(line.target() + way * line.visible() * kPageShare, time, Pace::Quick);
    }
}

void NSScrollMotion::release(CGPoint velocity, double time) {
    const auto fling = [this, time](Direction direction, double speed) {
        if (paging_) {
            comeToRestAtPage(direction, speed, time);
        } else if (std::abs(speed) >= kLeastFling && axis(direction).canMove(speed)) {
            axis(direction).fling(speed, time);
        }
    };
    fling(Horizontal, velocity.x);
    fling(Vertical, velocity.y);
}

void NSScrollMotion::comeToRestAtPage(Direction direction, double velocity, double time) {
    NSScrollAxis& line = axis(direction);
    if (line.visible() <= 0) {
        return;
    }
    const double place = line.offset() / line.visible();
    double page = line.pageAt(line.offset());
    if (std::abs(velocity) >= kPageFling) {
        page = velocity > 0 ? std::floor(place) + 1 : std::max(std::ceil(place) - 1, 0.0);
        line.fling(velocity, time);  // the glide takes the velocity over
    }
    line.glideTo(line.pageOffset(page), time, Pace::Gentle);
}

bool NSScrollMotion::canDrag(CGPoint way) const {
    const bool across = std::abs(way.x) > std::abs(way.y);
    const auto canMove = [&](Direction direction) {
        return axis(direction).canMove(direction == Vertical ? -way.y : -way.x);
    };
    if (canMove(across ? Horizontal : Vertical)) {
        return true;
    }
    // A diagonal drag may go in the other direction.
    const double least = std::min(std::abs(way.x), std::abs(way.y));
    const double most = std::max(std::abs(way.x), std::abs(way.y));
    return least > most / 2 && canMove(across ? Vertical : Horizontal);
}

}  // namespace orvane::platform
