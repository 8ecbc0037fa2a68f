#pragma once

#include <cstdint>

#include "platform/coregraphics/CairoHandles.h"

namespace orvane::platform {

class RunFont;

// Helpers of the two glyph painters. Internal to this module.

// The whole pixel that contains a point.
struct Pixel {
    int x, y;
};

// A context for building paths under the identity. It cannot paint.
CairoContext pathContext();

// Fills the path of `path`, whose (0, 0) is the corner of `origin`, with the source of `target`.
// The color of a pixel depends neither on the clip nor on the whole pixels of the origin.
void fillAlike(cairo_t* target, cairo_t* path, Pixel origin, cairo_antialias_t antialias);

// How the outlines of a font are filled.
cairo_antialias_t antialiasOf(const RunFont& font);

// Sets the font of `cairo` at its size in user units. Its outlines are hinted if the desktop says
// so and the current transformation keeps text upright.
void setFont(cairo_t* cairo, const RunFont& font);

// Appends the outline of a glyph at (0, 0) under `matrix`, which maps glyph space (y down) to
// pixels. Resets the transformation to the identity.
void addGlyphPath(cairo_t* cairo, const RunFont& font, std::uint32_t glyph,
                  const cairo_matrix_t& matrix);

}  // namespace orvane::platform
