#include "platform/raster/Blend.h"

namespace orvane::platform {

namespace {

std::uint32_t toByte(double value) {
    return static_cast<std::uint32_t>(value * 255 + 0.5);
}

}  // namespace

std::uint32_t premultiplied(const CGColor& color) {
    const double alpha = limitedComponent(color.alpha);
    return toByte(alpha) << 24 | toByte(limitedComponent(color.red) * alpha) << 16 |
           toByte(limitedComponent(color.green) * alpha) << 8 |
           toByte(limitedComponent(color.blue) * alpha);
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
