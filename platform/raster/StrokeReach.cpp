#include "platform/raster/StrokeReach.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::platform {

namespace {

// Cairo rounds coordinates to 1/256 of a pixel, so the difference of two points is wrong by up to
// the diagonal of such a square.
constexpr double kRounding = 1.0 / 181;
constexpr double kPi = std::numbers::pi;

}  // namespace

StrokeReach::StrokeReach(const CGAffineTransform& pen, double halfWidth, double farthest)
    : pen_(pen),
      determinant_(pen.determinant()),
      halfWidth_(halfWidth),
      round_{halfWidth * std::hypot(pen.a, pen.c), halfWidth * std::hypot(pen.b, pen.d)},
      farthest_(farthest),
      // No vector of the inverse is longer than the sum of the absolute values.
      rounding_(kRounding *
                (std::abs(pen.a) + std::abs(pen.b) + std::abs(pen.c) + std::abs(pen.d)) /
                std::abs(determinant_)) {}

CGPoint StrokeReach::toUser(CGPoint p, CGPoint q) const {
    const double x = q.x - p.x;
    const double y = q.y - p.y;
    return {(pen_.d * x - pen_.c * y) / determinant_, (pen_.a * y - pen_.b * x) / determinant_};
}

double StrokeReach::distance(CGPoint p, CGPoint q) const {
    const CGPoint v = toUser(p, q);
    return std::sqrt(v.x * v.x + v.y * v.y);
}

StrokeReach::Line StrokeReach::line(CGPoint from, CGPoint to) const {
    const CGPoint v = toUser(from, to);
    const double length = std::sqrt(v.x * v.x + v.y * v.y);
    const CGPoint u = length > 0 ? CGPoint{v.x / length, v.y / length} : CGPoint{};
    // No angle up to pi / 2 is larger than its sine times pi / 2.
    const double doubt = length > rounding_ ? kPi / 2 * rounding_ / length : kPi;
    return {
        u,
        {halfWidth_ * (pen_.c * u.x - pen_.a * u.y), halfWidth_ * (pen_.d * u.x - pen_.b * u.y)},
        doubt};
}

CGPoint StrokeReach::ofStrip(const Line& line) const {
    return {std::min(round_.x, std::abs(line.side.x) + round_.x * line.doubt),
            std::min(round_.y, std::abs(line.side.y) + round_.y * line.doubt)};
}

CGPoint StrokeReach::ofJoin(const Line& in, const Line& out) const {
    const double cosine = in.direction.x * out.direction.x + in.direction.y * out.direction.y;
    const double doubt = in.doubt + out.doubt;
    // The square of the length of the miter, in half widths: 2 / (1 + cos(angle)).
    const double square = 2 / (1 + cosine - doubt);
    if (!(square > 0 && square < kMiterLimit * kMiterLimit)) {
        return {farthest_, farthest_};
    }
    // The derivative of the tip's position by the angles.
    const double error = doubt * (std::sqrt(square) + square / 2);
    const auto reach = [&](double a, double b, double round) {
        const double tip = std::abs(a + b) / (1 + cosine);
        return std::min(farthest_, std::max({tip, std::abs(a), std::abs(b)}) + round * error);
    };
    return {reach(in.side.x, out.side.x, round_.x), reach(in.side.y, out.side.y, round_.y)};
}

}  // namespace orvane::platform
