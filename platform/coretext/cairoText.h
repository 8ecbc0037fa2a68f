#pragma once

#include <cstdint>

#include "platform/coregraphics/CairoHandles.h"

namespace orvane::platform {

class RunFont;

// The raster library's objects with their release, and what both painters of glyphs ask of it.
// Internal to this room.

// The whole pixel that a point lies in.
struct Pixel {
    int x, y;
};

// A context for building paths under the identity; paints nowhere.
CairoContext pathContext();

// Fills the current path of `path`, whose 0, 0 stands at the corner of `origin`, with the source of
// `target`. What a pixel gets does not depend on the clip, nor on the whole pixels of the origin.
void fillAlike(cairo_t* target, cairo_t* path, Pixel origin);

// Sets the font on `cairo` at its size in user units, for whatever transformation is in force.
void setFont(cairo_t* cairo, const RunFont& font);

// Appends the outline of a glyph, drawn at 0, 0 under `matrix`, which takes glyph space (y down) to
// pixels. Leaves the transformation at the identity.
void addGlyphPath(cairo_t* cairo, const RunFont& font, std::uint32_t glyph,
                  const cairo_matrix_t& matrix);

}  // namespace orvane::platform
