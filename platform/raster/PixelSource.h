#pragma once

#include <cstdint>

#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// Colours that differ from pixel to pixel: a gradient, a bitmap under a transformation. What it
// gives for a pixel does not depend on the area asked for.
class PixelSource {
public:
    virtual ~PixelSource() = default;

    // The premultiplied colours of the area, up to Mask::kSide either way, in rows that far apart.
    virtual void fetch(const PixelRect& area, std::uint32_t* colors) const = 0;
};

}  // namespace orvane::platform
