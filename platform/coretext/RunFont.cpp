#include "platform/coretext/RunFont.h"

#include <cairo-ft.h>
#include <hb-ot.h>
#include <hb.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>

#include <algorithm>
#include <cmath>

#include "platform/coretext/FontMap.h"

namespace orvane::platform {

namespace {

std::uint64_t lastId = 0;

double fromPango(hb_position_t units) {
    return double(units) / PANGO_SCALE;
}

}  // namespace

std::shared_ptr<const RunFont> RunFont::of(PangoFont* font) {
    using Weak = std::weak_ptr<const RunFont>;
    static const GQuark key = g_quark_from_static_string("orvane-run-font");
    auto* known = static_cast<Weak*>(g_object_get_qdata(G_OBJECT(font), key));
    if (known == nullptr) {
        known = new Weak;
        g_object_set_qdata_full(G_OBJECT(font), key, known,
                                [](void* weak) { delete static_cast<Weak*>(weak); });
    }
    if (auto runFont = known->lock()) {
        return runFont;
    }
    const std::shared_ptr<const RunFont> runFont(new RunFont(font));
    *known = runFont;
    return runFont;
}

RunFont::RunFont(PangoFont* font)
    : id_(++lastId),
      font_(static_cast<PangoFont*>(g_object_ref(font))),
      scaledFont_(
          cairo_scaled_font_reference(pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font)))) {
    hb_font_t* const hbFont = pango_font_get_hb_font(font);
    // A bitmap font reports the size of its bitmaps; its metrics are scaled to the requested size.
    int scaleX = 0;
    int scaleY = 0;
    hb_font_get_scale(hbFont, &scaleX, &scaleY);
    size_ = std::abs(fromPango(scaleY));

    hb_font_extents_t extents{};
    hb_font_get_extents_for_direction(hbFont, HB_DIRECTION_LTR, &extents);
    ascent_ = fromPango(extents.ascender);
    descent_ = -fromPango(extents.descender);
    leading_ = std::max(0.0, fromPango(extents.line_gap));

    hb_position_t offset = 0;
    hb_position_t thickness = 0;
    if (hb_ot_metrics_get_position(hbFont, HB_OT_METRICS_TAG_UNDERLINE_OFFSET, &offset) == 0) {
        offset = hb_position_t(-size_ * PANGO_SCALE / 10);
    }
    if (hb_ot_metrics_get_position(hbFont, HB_OT_METRICS_TAG_UNDERLINE_SIZE, &thickness) == 0) {
        thickness = hb_position_t(size_ * PANGO_SCALE / 18);
    }
    underlineThickness_ = std::max(1.0, std::round(fromPango(thickness)));
    underlineOffset_ = std::max(1.0, std::round(-fromPango(offset)));

    missingGlyphAdvance_ = hb_font_get_glyph_h_advance(hbFont, 0);
    FcBool antialias = FcTrue;
    FcPatternGetBool(pango_fc_font_get_pattern(PANGO_FC_FONT(font_)), FC_ANTIALIAS, 0, &antialias);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_scaled_font_get_font_options(scaledFont_, options);
    antialiased_ =
        antialias != FcFalse && cairo_font_options_get_antialias(options) != CAIRO_ANTIALIAS_NONE;
    cairo_font_options_destroy(options);
    readFace();
}

void RunFont::readFace() {
    // A generous box for fonts without outlines.
    glyphBox_ = {{-size_, -size_}, {3 * size_, 3 * size_}};
    FT_Face const face = cairo_ft_scaled_font_lock_face(scaledFont_);
    if (face == nullptr) {
        return;
    }
    color_ = FT_HAS_COLOR(face);
    if (FT_IS_SCALABLE(face) && face->units_per_EM > 0) {
        const double scale = size_ / face->units_per_EM;
        // A font's box may be too small; a margin of half the size covers known fonts.
        const double margin = size_ / 2;
        const FT_BBox& box = face->bbox;
        glyphBox_.origin = {double(box.xMin) * scale - margin, double(box.yMin) * scale - margin};
        glyphBox_.size = {double(box.xMax - box.xMin) * scale + 2 * margin,
                          double(box.yMax - box.yMin) * scale + 2 * margin};
    }
    cairo_ft_scaled_font_unlock_face(scaledFont_);
}

CGRect RunFont::boundsOf(std::uint32_t glyph) const {
    if (color_) {
        return glyphBox_;
    }
    PangoRectangle ink;
    pango_font_get_glyph_extents(font_, glyph, &ink, nullptr);
    return {{pango_units_to_double(ink.x), -pango_units_to_double(ink.y + ink.height)},
            {pango_units_to_double(ink.width), pango_units_to_double(ink.height)}};
}

RunFont::~RunFont() {
    // The last text in a font may be released on any thread, and the font removes itself from its
    // map.
    FontMap::Locked map;
    cairo_scaled_font_destroy(scaledFont_);
    g_object_unref(font_);
}

}  // namespace orvane::platform
