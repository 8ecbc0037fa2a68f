#pragma once

#include <cairo.h>

#include "platform/coregraphics/CGColor.h"

namespace orvane::platform {

// What a CGDrawable paints on: the raster library's own context with the canvas's transformation
// and clip in force and its fill colour as the source. Only the rooms that draw text include this.
struct CairoCanvas {
    cairo_t* cairo;
    CGColor fillColor;
    CGColor strokeColor;
};

}  // namespace orvane::platform
