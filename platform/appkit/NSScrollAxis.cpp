#include "platform/appkit/NSScrollAxis.h"

#include <algorithm>
#include <cmath>

namespace orvane::platform {

namespace {

// The natural frequencies of the springs, per second. A critically damped spring has a tenth of its
// way left after 3.9 / frequency.
constexpr double kQuickRate = 28;
constexpr double kGentleRate = 14;
// The part of the velocity that a fling loses in a second: the friction of GTK's own kinetic
// scrolling.
constexpr double kFriction = 4;
// A motion ends when so little of its way is left, in points.
constexpr double kRest = 0.25;

}  // namespace

bool NSScrollAxis::setLengths(double content, double visible) {
    // The comparisons are false for NaN.
    content_ = content > 0 ? content : 0;
    visible_ = visible > 0 ? visible : 0;
    if (motion_ == Motion::Glide && target_ != clamped(target_)) {
        distance_ += target_ - clamped(target_);
        target_ = clamped(target_);
    }
    const double before = offset_;
    offset_ = clamped(offset_);
    return offset_ != before;
}

bool NSScrollAxis::setEnabled(bool enabled) {
    enabled_ = enabled;
    return setLengths(content_, visible_);
}

double NSScrollAxis::limit() const {
    return enabled_ ? std::max(content_ - visible_, 0.0) : 0;
}

double NSScrollAxis::clamped(double offset) const {
    return std::clamp(offset, 0.0, limit());
}

double NSScrollAxis::target() const {
    switch (motion_) {
        case Motion::Glide:
            return target_;
        case Motion::Fling:
            return clamped(origin_ + velocity_ / kFriction);
        case Motion::None:
            break;
    }
    return offset_;
}

bool NSScrollAxis::canMove(double delta) const {
    return delta < 0 ? target() > 0 : delta > 0 && target() < limit();
}

void NSScrollAxis::jumpTo(double offset) {
    stop();
    offset_ = clamped(offset);
}

void NSScrollAxis::glideTo(double offset, double time, Pace pace) {
    const double velocity = velocityAt(time);
    target_ = clamped(offset);
    if (target_ == offset_) {
        stop();
        return;
    }
    motion_ = Motion::Glide;
    start_ = time;
    distance_ = offset_ - target_;
    velocity_ = velocity;
    rate_ = pace == Pace::Quick ? kQuickRate : kGentleRate;
}

void NSScrollAxis::fling(double velocity, double time) {
    motion_ = Motion::Fling;
    start_ = time;
    origin_ = offset_;
    velocity_ = velocity;
}

void NSScrollAxis::stop() {
    motion_ = Motion::None;
}

void NSScrollAxis::insertBefore(double delta) {
    content_ = std::max(content_ + delta, 0.0);
    origin_ += delta;
    target_ = clamped(target_ + delta);
    offset_ = clamped(offset_ + delta);
}

double NSScrollAxis::velocityAt(double time) const {
    const double elapsed = std::max(time - start_, 0.0);
    switch (motion_) {
        case Motion::Glide:
            return (velocity_ - rate_ * (velocity_ + rate_ * distance_) * elapsed) *
                   std::exp(-rate_ * elapsed);
        case Motion::Fling:
            return velocity_ * std::exp(-kFriction * elapsed);
        case Motion::None:
            break;
    }
    return 0;
}

void NSScrollAxis::step(double time) {
    const double elapsed = std::max(time - start_, 0.0);
    if (motion_ == Motion::Glide) {
        // x(t) = target + (d + (v + w d) t) exp(-w t)
        const double left =
            (distance_ + (velocity_ + rate_ * distance_) * elapsed) * std::exp(-rate_ * elapsed);
        offset_ = clamped(target_ + left);
        if (std::abs(left) < kRest && std::abs(velocityAt(time)) < kRest * rate_) {
            offset_ = target_;
            stop();
        }
    } else if (motion_ == Motion::Fling) {
        const double left = velocity_ / kFriction * std::exp(-kFriction * elapsed);
        const double reached = origin_ + velocity_ / kFriction - left;
        offset_ = clamped(reached);
        if (std::abs(left) < kRest || offset_ != reached) {
            stop();
        }
    }
}

double NSScrollAxis::pageOffset(double page) const {
    return clamped(page * visible_);
}

double NSScrollAxis::pageAt(double offset) const {
    if (visible_ <= 0) {
        return 0;
    }
    // The last page may be nearer than a page's length to the one before it.
    const double last = std::ceil(limit() / visible_);
    const double before = std::min(std::round(offset / visible_), last);
    return limit() - offset < std::abs(offset - pageOffset(before)) ? last : before;
}

}  // namespace orvane::platform
