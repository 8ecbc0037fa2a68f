#include "platform/raster/GradientSource.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/raster/GradientRamp.h"
#include "platform/raster/Mask.h"
#include "platform/raster/places.h"

namespace orvane::platform {

namespace {

constexpr double kBehindTheEnd = 2;

}  // namespace

GradientSource::GradientSource(const CGGradient& gradient, const CGAffineTransform& t,
                               CGPoint start, CGPoint end, unsigned options)
    : gradient_(gradient), options_(options) {
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const double square = dx * dx + dy * dy;
    hasAxis_ = square > 0 && std::isfinite(square);
    if (!hasAxis_) {
        return;
    }
    // Moving the canvas by whole pixels must not change a color: the start is rounded to a grid
    // that is exact in binary, and colors depend on the distance from it.
    const auto place = [](double v) { return roundedTo(kPlacesPerPixel, v); };
    const CGPoint mapped = t.apply(start);
    start_ = {place(mapped.x), place(mapped.y)};
    if (!std::isfinite(start_.x) || !std::isfinite(start_.y)) {
        hasAxis_ = false;
        return;
    }
    const double determinant = t.determinant();
    perColumn_ = (t.d * dx - t.b * dy) / determinant / square;
    perRow_ = (t.a * dy - t.c * dx) / determinant / square;
    // A very short axis is a hard edge of any steepness. Positions along it must stay in the range
    // of float.
    constexpr double kSteepest = 1e24;
    const double steepness = std::max(std::abs(perColumn_), std::abs(perRow_));
    if (!std::isfinite(steepness)) {
        hasAxis_ = false;
    } else if (steepness > kSteepest) {
        perColumn_ *= kSteepest / steepness;
        perRow_ *= kSteepest / steepness;
    }
}

void GradientSource::fetch(const PixelRect& area, std::uint32_t* colors) const {
    GradientRamp ramp(gradient_.stops(), options_);
    for (int y = area.top; y < area.bottom; ++y, colors += Mask::kSide) {
        if (!hasAxis_) {
            std::fill_n(colors, area.width(), ramp.at(kBehindTheEnd));
            continue;
        }
        if (perRow_ == 0 && y > area.top) {
            std::copy_n(colors - Mask::kSide, area.width(), colors);
            continue;
        }
        const double row = (y + 0.5 - start_.y) * perRow_;
        if (perColumn_ == 0) {
            std::fill_n(colors, area.width(), ramp.at(row));
            continue;
        }
        for (int x = area.left; x < area.right; ++x) {
            colors[x - area.left] = ramp.at((x + 0.5 - start_.x) * perColumn_ + row);
        }
    }
}

}  // namespace orvane::platform
