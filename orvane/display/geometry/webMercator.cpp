#include "orvane/display/geometry/webMercator.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::display::geometry {

using std::numbers::pi;

namespace {

constexpr double kRadians = pi / 180;

}  // namespace

Point<double> toWebMercator(const Coordinate& coordinate) {
    const double latitude = std::clamp(coordinate.latitude, -kWebMercatorEdge, kWebMercatorEdge);
    return {(coordinate.longitude + 180) / 360,
            (1 - std::asinh(std::tan(latitude * kRadians)) / pi) / 2};
}

Coordinate fromWebMercator(const Point<double>& place) {
    const double x = place.x == 1 ? 1 : place.x - std::floor(place.x);
    return {std::atan(std::sinh(pi * (1 - 2 * place.y))) / kRadians, x * 360 - 180};
}

}  // namespace orvane::display::geometry
