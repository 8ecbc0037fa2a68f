#pragma once

#include <cairo.h>

#include "platform/coregraphics/CGColor.h"

namespace orvane::platform {

// The target of CGDrawable::paint: a Cairo context with the transformation and the clip of the
// canvas, and its fill color as the source. Only modules that draw text include this header.
struct CairoCanvas {
    cairo_t* cairo;
    CGColor fillColor;
    CGColor strokeColor;
};

}  // namespace orvane::platform
