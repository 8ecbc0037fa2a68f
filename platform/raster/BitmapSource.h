#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/raster/Mask.h"
#include "platform/raster/PixelSource.h"

namespace orvane::platform {

// Unchanged pixels with their corner at (left, top) of the canvas. fetch() is called only for areas
// inside them.
class BitmapSource final : public PixelSource {
public:
    // Rows are `stride` words apart. The caller keeps the pixels alive as long as the source.
    BitmapSource(const std::uint32_t* pixels, std::ptrdiff_t stride, int left, int top)
        : pixels_(pixels), stride_(stride), left_(left), top_(top) {}

    void fetch(const PixelRect& area, std::uint32_t* colors) const override {
        for (int y = area.top; y < area.bottom; ++y, colors += Mask::kSide) {
            std::copy_n(pixels_ + (y - top_) * stride_ + (area.left - left_), area.width(), colors);
        }
    }

private:
    const std::uint32_t* pixels_;
    std::ptrdiff_t stride_;
    int left_;
    int top_;
};

}  // namespace orvane::platform
