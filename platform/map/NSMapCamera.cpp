#include "platform/map/NSMapCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::platform {

namespace {

// How much a flight prefers zooming to panning: the value that the authors of the path found best.
constexpr double kRho = std::numbers::sqrt2;
// How long a flight takes: for its beginning and end, and for each unit of the path, in seconds.
constexpr double kFlightStart = 0.25;
constexpr double kFlightUnit = 0.35;
constexpr double kLongestFlight = 2.5;
// The part of the velocity that a fling loses in a second; as for scrolled content.
constexpr double kFriction = 4;
// The part of a zoom that is left is reduced by e in 1 / rate seconds.
constexpr double kZoomRate = 16;
// A motion ends when so little of its way is left, in points and in zoom levels.
constexpr double kRest = 0.25;
constexpr double kZoomRest = 0.002;
// Flights that are shorter than this part of the view only zoom.
constexpr double kNoDistance = 1e-6;

double wrapped(double x) {
    return x - std::floor(x);
}

double easeInOut(double t) {
    return t * t * (3 - 2 * t);
}

}  // namespace

void NSMapCamera::setZoomLimits(double least, double most) {
    leastZoom_ = least;
    mostZoom_ = std::max(least, most);
    const double before = zoom_;
    zoom_ = std::clamp(zoom_, leastZoom_, mostZoom_);
    if (zoom_ != before) {
        stop();
    }
}

double NSMapCamera::worldSize() const {
    return tileSize_ * std::exp2(zoom_);
}

CGPoint NSMapCamera::toView(CGPoint place) const {
    const double dx = place.x - center_.x;
    const double world = worldSize();
    return {size_.width / 2 + (dx - std::round(dx)) * world,
            size_.height / 2 + (place.y - center_.y) * world};
}

CGPoint NSMapCamera::toPlace(CGPoint point) const {
    const double world = worldSize();
    return {center_.x + (point.x - size_.width / 2) / world,
            center_.y + (point.y - size_.height / 2) / world};
}

double NSMapCamera::zoomToFit(CGSize extent, double margin) const {
    const auto fit = [&](double length, double room) {
        const double points = std::max(room - 2 * margin, 1.0);
        return length > 0 ? std::log2(points / (length * tileSize_)) : mostZoom_;
    };
    return std::clamp(std::min(fit(extent.width, size_.width), fit(extent.height, size_.height)),
                      leastZoom_, mostZoom_);
}

void NSMapCamera::setCenter(CGPoint center) {
    center_ = {wrapped(center.x), std::clamp(center.y, 0.0, 1.0)};
}

void NSMapCamera::jumpTo(CGPoint center, double zoom) {
    stop();
    setCenter(center);
    zoom_ = std::clamp(zoom, leastZoom_, mostZoom_);
}

void NSMapCamera::panBy(CGPoint delta) {
    stop();
    const double world = worldSize();
    setCenter({center_.x - delta.x / world, center_.y - delta.y / world});
}

void NSMapCamera::zoomBy(double levels, CGPoint anchor) {
    stop();
    const CGPoint place = toPlace(anchor);
    zoom_ = std::clamp(zoom_ + levels, leastZoom_, mostZoom_);
    const CGPoint moved = toPlace(anchor);
    setCenter({center_.x + place.x - moved.x, center_.y + place.y - moved.y});
}

// ---- motion ----

void NSMapCamera::flyTo(CGPoint center, double zoom, double time, std::optional<double> duration) {
    Flight flight;
    flight.from = center_;
    flight.fromZoom = zoom_;
    flight.toZoom = std::clamp(zoom, leastZoom_, mostZoom_);
    const double dx = center.x - center_.x;
    flight.to = {center_.x + dx - std::round(dx), std::clamp(center.y, 0.0, 1.0)};
    flight.distance = std::hypot(flight.to.x - flight.from.x, flight.to.y - flight.from.y);
    // The names of the paper, with lengths in worlds: w for the extent of the view, u for the way.
    const double points = std::max({size_.width, size_.height, 1.0});
    const double w0 = points / (tileSize_ * std::exp2(flight.fromZoom));
    const double w1 = points / (tileSize_ * std::exp2(flight.toZoom));
    flight.extent = w0;
    if (flight.distance <= kNoDistance * w0) {
        flight.distance = 0;
        flight.length = std::abs(std::log(w1 / w0)) / kRho;
    } else {
        const double rho2 = kRho * kRho;
        const double u1 = flight.distance;
        const double b0 = (w1 * w1 - w0 * w0 + rho2 * rho2 * u1 * u1) / (2 * w0 * rho2 * u1);
        const double b1 = (w1 * w1 - w0 * w0 - rho2 * rho2 * u1 * u1) / (2 * w1 * rho2 * u1);
        flight.r0 = std::asinh(-b0);
        flight.length = (std::asinh(-b1) - flight.r0) / kRho;
    }
    flight.duration = std::max(
        duration.value_or(std::min(kFlightStart + kFlightUnit * flight.length, kLongestFlight)),
        0.0);
    flight_ = flight;
    motion_ = Motion::Flight;
    start_ = time;
}

void NSMapCamera::fling(CGPoint velocity, double time) {
    const double world = worldSize();
    motion_ = Motion::Fling;
    start_ = time;
    origin_ = center_;
    velocity_ = {-velocity.x / world, -velocity.y / world};
}

void NSMapCamera::glideZoomBy(double levels, CGPoint anchor, double time) {
    const double target = motion_ == Motion::Zoom ? zoomTarget_ : zoom_;
    motion_ = Motion::Zoom;
    start_ = time;
    zoomStart_ = zoom_;
    zoomTarget_ = std::clamp(target + levels, leastZoom_, mostZoom_);
    anchor_ = anchor;
}

void NSMapCamera::step(double time) {
    const double elapsed = std::max(time - start_, 0.0);
    switch (motion_) {
        case Motion::None:
            break;
        case Motion::Flight:
            stepFlight(elapsed);
            break;
        case Motion::Fling:
            stepFling(elapsed);
            break;
        case Motion::Zoom:
            stepZoom(elapsed);
            break;
    }
}

void NSMapCamera::stepFlight(double elapsed) {
    const Flight& flight = flight_;
    if (elapsed >= flight.duration) {
        jumpTo(flight.to, flight.toZoom);
        return;
    }
    const double s = flight.length * easeInOut(elapsed / flight.duration);
    if (flight.distance == 0) {
        const double part = flight.length > 0 ? s / flight.length : 1;
        zoom_ = std::lerp(flight.fromZoom, flight.toZoom, part);
        return;
    }
    const double r = kRho * s + flight.r0;
    const double way = flight.extent / (kRho * kRho) *
                       (std::cosh(flight.r0) * std::tanh(r) - std::sinh(flight.r0));
    const double part = way / flight.distance;
    zoom_ = std::clamp(flight.fromZoom + std::log2(std::cosh(r) / std::cosh(flight.r0)), leastZoom_,
                       mostZoom_);
    setCenter(
        {std::lerp(flight.from.x, flight.to.x, part), std::lerp(flight.from.y, flight.to.y, part)});
}

void NSMapCamera::stepFling(double elapsed) {
    const double decay = std::exp(-kFriction * elapsed);
    setCenter({origin_.x + velocity_.x / kFriction * (1 - decay),
               origin_.y + velocity_.y / kFriction * (1 - decay)});
    if (std::hypot(velocity_.x, velocity_.y) / kFriction * decay * worldSize() < kRest) {
        stop();
    }
}

void NSMapCamera::stepZoom(double elapsed) {
    const double left = (zoomStart_ - zoomTarget_) * std::exp(-kZoomRate * elapsed);
    const bool isOver = std::abs(left) < kZoomRest;
    zoomBy((isOver ? zoomTarget_ : zoomTarget_ + left) - zoom_, anchor_);
    motion_ = isOver ? Motion::None : Motion::Zoom;
}

}  // namespace orvane::platform
