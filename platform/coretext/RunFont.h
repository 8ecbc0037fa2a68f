#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <cstdint>
#include <memory>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// One font file at one size, as shaping chose it for a run of text: the requested font or a
// fallback for characters that it lacks. Internal to this room; made, used and released under the
// lock of FontMap.
class RunFont {
public:
    // The one RunFont of a loaded font.
    static std::shared_ptr<const RunFont> of(PangoFont* font);

    ~RunFont();
    RunFont(const RunFont&) = delete;
    RunFont& operator=(const RunFont&) = delete;

    // Tells this font from all others of the process, those that are gone included.
    std::uint64_t id() const { return id_; }
    cairo_scaled_font_t* scaledFont() const { return scaledFont_; }

    // Its glyphs are pictures with colours of their own, not outlines to be filled.
    bool isColor() const { return color_; }

    // User units; all count positive.
    double size() const { return size_; }
    double ascent() const { return ascent_; }
    double descent() const { return descent_; }
    double leading() const { return leading_; }
    // In whole units, so that the line is crisp wherever the baseline is: the upper edge of the
    // underline below the baseline, and its thickness.
    double underlineOffset() const { return underlineOffset_; }
    double underlineThickness() const { return underlineThickness_; }

    // The advance of the box that stands for characters that no font has; in the units of the
    // shaping library.
    int missingGlyphAdvance() const { return missingGlyphAdvance_; }

    // A box around any glyph drawn at 0, 0; y up.
    const CGRect& glyphBox() const { return glyphBox_; }

private:
    explicit RunFont(PangoFont* font);
    void readFace();

    std::uint64_t id_;
    PangoFont* font_;
    cairo_scaled_font_t* scaledFont_;
    bool color_ = false;
    double size_ = 0;
    double ascent_ = 0, descent_ = 0, leading_ = 0;
    double underlineOffset_ = 0, underlineThickness_ = 0;
    int missingGlyphAdvance_ = 0;
    CGRect glyphBox_;
};

}  // namespace orvane::platform
