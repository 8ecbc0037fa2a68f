#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// The state that saveGState saves and restoreGState restores.
struct GraphicsState {
    struct Paint {
        CGColor color;
        std::uint32_t premultiplied = 0xff000000u;
    };

    CGAffineTransform ctm;
    // The clip: whole pixels, and the number of the canvas's antialiased clip shapes that apply.
    PixelRect clipBounds;
    std::size_t clipShapes = 0;
    Paint fill;
    Paint stroke;
    double lineWidth = 1;
    double dashPhase = 0;
    std::vector<double> dash;
};

}  // namespace orvane::platform
