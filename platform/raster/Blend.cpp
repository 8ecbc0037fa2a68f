#include "platform/raster/Blend.h"

#include <algorithm>
#include <cmath>

namespace orvane::platform {

namespace {

double component(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

std::uint32_t toByte(double value) {
    return static_cast<std::uint32_t>(value * 255 + 0.5);
}

}  // namespace

std::uint32_t premultiplied(const CGColor& color) {
    const double alpha = component(color.alpha);
    return toByte(alpha) << 24 | toByte(component(color.red) * alpha) << 16 |
           toByte(component(color.green) * alpha) << 8 | toByte(component(color.blue) * alpha);
}

void blendCoverage(std::uint32_t* row, const std::uint8_t* coverage, int count,
                   std::uint32_t color) {
    const std::uint64_t source = wide::spread(color);
    for (int i = 0; i < count; ++i) {
        row[i] = wide::packed(wide::over(wide::scaled(source, coverage[i]), wide::spread(row[i])));
    }
}

void blendColors(std::uint32_t* row, const std::uint32_t* colors, const std::uint8_t* coverage,
                 int count) {
    for (int i = 0; i < count; ++i) {
        const std::uint64_t source = wide::scaled(wide::spread(colors[i]), coverage[i]);
        row[i] = wide::packed(wide::over(source, wide::spread(row[i])));
    }
}

}  // namespace orvane::platform
