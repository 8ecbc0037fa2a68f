#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <cstdint>
#include <memory>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// One font file at one size, selected by shaping for a run of text: the requested font, or a
// fallback for characters that it lacks. Internal to this module; created, used and released under
// the lock of FontMap.
class RunFont {
public:
    // Returns the only RunFont of a loaded font.
    static std::shared_ptr<const RunFont> of(PangoFont* font);

    ~RunFont();
    RunFont(const RunFont&) = delete;
    RunFont& operator=(const RunFont&) = delete;

    // Unique within the process, even after the font was released.
    std::uint64_t id() const { return id_; }
    cairo_scaled_font_t* scaledFont() const { return scaledFont_; }

    // Whether the glyphs are color images, not outlines.
    bool isColor() const { return color_; }
    // False if the desktop's settings turn antialiasing off, for all fonts or for this one.
    bool isAntialiased() const { return antialiased_; }

    // User units, all positive.
    double size() const { return size_; }
    double ascent() const { return ascent_; }
    double descent() const { return descent_; }
    double leading() const { return leading_; }
    // Rounded to whole units, so that the line is sharp at every baseline position: the distance
    // from the baseline down to the upper edge of the underline, and its thickness.
    double underlineOffset() const { return underlineOffset_; }
    double underlineThickness() const { return underlineThickness_; }

    // The advance of the glyph for missing characters, in Pango units.
    int missingGlyphAdvance() const { return missingGlyphAdvance_; }

    // The box of a glyph at (0, 0), y axis up, as far as it is known: for color images, glyphBox().
    CGRect boundsOf(std::uint32_t glyph) const;
    // A box around any glyph at (0, 0), y axis up.
    const CGRect& glyphBox() const { return glyphBox_; }

private:
    explicit RunFont(PangoFont* font);
    void readFace();

    std::uint64_t id_;
    PangoFont* font_;
    cairo_scaled_font_t* scaledFont_;
    bool color_ = false;
    bool antialiased_ = true;
    double size_ = 0;
    double ascent_ = 0, descent_ = 0, leading_ = 0;
    double underlineOffset_ = 0, underlineThickness_ = 0;
    int missingGlyphAdvance_ = 0;
    CGRect glyphBox_;
};

}  // namespace orvane::platform
