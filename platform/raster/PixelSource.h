#pragma once

#include <cstdint>

#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// Colors that vary by pixel: a gradient or a transformed image. The color of a pixel does not
// depend on the fetched area.
class PixelSource {
public:
    virtual ~PixelSource() = default;

    // Writes the premultiplied colors of the area, at most Mask::kSide pixels in each direction.
    // Rows are Mask::kSide words apart.
    virtual void fetch(const PixelRect& area, std::uint32_t* colors) const = 0;
};

}  // namespace orvane::platform
