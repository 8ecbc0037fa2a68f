#include "platform/raster/sensibleStroke.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace orvane::platform {

namespace {

// The pen is limited to this many pixels: larger than any bitmap, within Cairo's range.
constexpr double kWidestPen = 1 << 18;
// Shorter dash periods, in pixels, are drawn as a solid line with the average coverage: along both
// axes, or along the axis that the transformation shortens most. Cairo would need millions of
// dashes where rounding to its grid is magnified by the inverse of the transformation.
constexpr double kShortestDashPeriod = 0.25;
constexpr double kShortestSquashedPeriod = 1.0 / 64;

// The shortest image of a unit vector.
double smallestStretch(const CGAffineTransform& t) {
    const double sum = t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d;
    const double root = std::sqrt(std::max(0.0, sum * sum / 4 - t.determinant() * t.determinant()));
    // The smaller singular value, as a quotient because a difference would lose its digits.
    return std::abs(t.determinant()) / std::sqrt(sum / 2 + root);
}

// The share of the line that a dash paints. An array of odd length is applied twice, with dashes
// and gaps exchanged.
double paintedShare(std::span<const double> dash, double sum) {
    if (dash.size() % 2 == 1) {
        return 0.5;
    }
    double painted = 0;
    for (std::size_t i = 0; i < dash.size(); i += 2) {
        painted += dash[i];
    }
    return painted / sum;
}

}  // namespace

StrokeStyle sensibleStroke(const StrokeStyle& stroke, const CGAffineTransform& pen) {
    StrokeStyle result{std::min(stroke.width, kWidestPen / pen.norm()), 0, {}};
    double sum = 0;
    for (const double length : stroke.dash) {
        if (!(length >= 0)) {
            return result;
        }
        sum += length;
    }
    const double period = stroke.dash.size() % 2 == 1 ? 2 * sum : sum;
    if (!std::isfinite(period) || period == 0) {
        return result;
    }
    if (period * pen.norm() < kShortestDashPeriod ||
        period * smallestStretch(pen) < kShortestSquashedPeriod) {
        result.opacity = paintedShare(stroke.dash, sum);
        return result;
    }
    result.dash = stroke.dash;
    if (std::isfinite(stroke.dashPhase)) {
        result.dashPhase = std::fmod(stroke.dashPhase, period);
        if (result.dashPhase < 0) {
            result.dashPhase += period;
        }
    }
    return result;
}

}  // namespace orvane::platform
