#include "platform/raster/RoundGradientSource.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "platform/coregraphics/CGGradient.h"
#include "platform/raster/GradientRamp.h"
#include "platform/raster/Mask.h"
#include "platform/raster/places.h"

namespace orvane::platform {

namespace {

constexpr double kFarthest = 1e30;
constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

}  // namespace

RoundGradientSource::RoundGradientSource(const CGGradient& gradient,
                                         const CGAffineTransform& toPixels, CGPoint center,
                                         unsigned options)
    : gradient_(gradient),
      options_(options),
      // Moving the canvas by whole pixels must not change a color; see GradientSource.
      center_{roundedTo(kPlacesPerPixel, toPixels.apply(center).x),
              roundedTo(kPlacesPerPixel, toPixels.apply(center).y)},
      fromPixels_(
          CGAffineTransform{toPixels.a, toPixels.b, toPixels.c, toPixels.d, 0, 0}.invert().value_or(
              CGAffineTransform{})) {}

void RoundGradientSource::fetch(const PixelRect& area, std::uint32_t* colors) const {
    GradientRamp ramp(gradient_.stops(), options_);
    for (int y = area.top; y < area.bottom; ++y, colors += Mask::kSide) {
        for (int x = area.left; x < area.right; ++x) {
            const CGPoint place =
                fromPixels_.apply(CGPoint{x + 0.5 - center_.x, y + 0.5 - center_.y});
            const double position = positionAt(place.x, place.y);
            // A position is infinite where the circles touch the focus.
            colors[x - area.left] =
                std::isnan(position) ? 0 : ramp.at(std::clamp(position, -kFarthest, kFarthest));
        }
    }
}

RadialGradientSource::RadialGradientSource(const CGGradient& gradient,
                                           const CGAffineTransform& toPixels, CGPoint startCenter,
                                           double startRadius, CGPoint endCenter, double endRadius,
                                           unsigned options)
    : RoundGradientSource(gradient, toPixels, startCenter, options),
      way_{endCenter.x - startCenter.x, endCenter.y - startCenter.y},
      startRadius_(startRadius),
      growth_(endRadius - startRadius),
      options_(options) {}

// Solves |p - t * way| = startRadius + t * growth for the largest t whose circle is there.
double RadialGradientSource::positionAt(double x, double y) const {
    const double a = way_.x * way_.x + way_.y * way_.y - growth_ * growth_;
    const double half = x * way_.x + y * way_.y + startRadius_ * growth_;
    const double c = x * x + y * y - startRadius_ * startRadius_;
    const auto isThere = [this](double t) {
        return startRadius_ + t * growth_ >= 0 &&
               (t >= 0 || (options_ & kCGGradientDrawsBeforeStartLocation) != 0) &&
               (t <= 1 || (options_ & kCGGradientDrawsAfterEndLocation) != 0);
    };
    double first = kNowhere;
    double second = kNowhere;
    if (a == 0) {
        first = c / (2 * half);
    } else {
        const double root = std::sqrt(half * half - a * c);
        first = (half + std::copysign(root, a)) / a;
        second = (half - std::copysign(root, a)) / a;
    }
    return isThere(first) ? first : isThere(second) ? second : kNowhere;
}

ConicGradientSource::ConicGradientSource(const CGGradient& gradient,
                                         const CGAffineTransform& toPixels, CGPoint center,
                                         double angle)
    : RoundGradientSource(gradient, toPixels, center, 0), angle_(angle) {}

double ConicGradientSource::positionAt(double x, double y) const {
    const double turns = (std::atan2(y, x) - angle_) / (2 * std::numbers::pi);
    return turns - std::floor(turns);
}

}  // namespace orvane::platform
