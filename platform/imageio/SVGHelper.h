#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A drawing and its pixels, premultiplied ARGB words.
struct SVGRendering {
    CGSize size;
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

// Draws an SVG picture with `scale` pixels for a unit, as far as the limits allow. Returns nothing
// for what is not a drawing, and for one that takes too long or too much memory, with a line in the
// log. Any thread.
//
// The program orvane-svg does it. A short text can describe a drawing that takes hours or makes the
// library for SVG abort, and neither can be stopped within a process.
std::optional<SVGRendering> renderSVG(std::span<const unsigned char> bytes, double scale);

}  // namespace orvane::platform
