#include "platform/coretext/cairoText.h"

#include <algorithm>
#include <cmath>

#include "platform/coretext/RunFont.h"

namespace orvane::platform {

CairoContext pathContext() {
    // A surface of one pixel is sufficient for measuring paths.
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    return CairoContext(cairo_create(surface.get()));
}

// Cairo clips a path before it computes coverage, which changes the coverage of edges slightly. So
// the path is filled into masks on a grid that does not depend on the clip.
void fillAlike(cairo_t* target, cairo_t* path, Pixel origin, cairo_antialias_t antialias) {
    constexpr int kSide = 256;
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_path_extents(path, &left, &top, &right, &bottom);
    if (!(left < right && top < bottom)) {
        return;
    }
    double clipLeft = 0, clipTop = 0, clipRight = 0, clipBottom = 0;
    cairo_clip_extents(target, &clipLeft, &clipTop, &clipRight, &clipBottom);
    const auto firstTile = [](double edge, double clip) {
        return static_cast<int>(std::floor(std::max(edge, clip) / kSide));
    };
    const int tileRight =
        static_cast<int>(std::ceil(std::min(right, clipRight - origin.x) / kSide));
    const int tileBottom =
        static_cast<int>(std::ceil(std::min(bottom, clipBottom - origin.y) / kSide));
    const CairoPath outline(cairo_copy_path(path));
    for (int row = firstTile(top, clipTop - origin.y); row < tileBottom; ++row) {
        for (int column = firstTile(left, clipLeft - origin.x); column < tileRight; ++column) {
            const CairoSurface mask(cairo_image_surface_create(CAIRO_FORMAT_A8, kSide, kSide));
            const CairoContext cairo(cairo_create(mask.get()));
            cairo_translate(cairo.get(), -column * kSide, -row * kSide);
            cairo_append_path(cairo.get(), outline.get());
            cairo_set_antialias(cairo.get(), antialias);
            cairo_fill(cairo.get());
            cairo_mask_surface(target, mask.get(), origin.x + column * kSide,
                               origin.y + row * kSide);
        }
    }
}

namespace {

// Hints move outlines to the pixel grid, which exists only for upright text.
bool isUpright(const cairo_matrix_t& m) {
    return m.xy == 0 && m.yx == 0 && m.xx > 0 && m.yy > 0;
}

}  // namespace

cairo_antialias_t antialiasOf(const RunFont& font) {
    return font.isAntialiased() ? CAIRO_ANTIALIAS_BEST : CAIRO_ANTIALIAS_NONE;
}

void setFont(cairo_t* cairo, const RunFont& font) {
    cairo_scaled_font_t* const scaledFont = font.scaledFont();
    cairo_matrix_t fontMatrix;
    cairo_scaled_font_get_font_matrix(scaledFont, &fontMatrix);
    cairo_set_font_face(cairo, cairo_scaled_font_get_font_face(scaledFont));
    cairo_set_font_matrix(cairo, &fontMatrix);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_scaled_font_get_font_options(scaledFont, options);
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    if (!isUpright(matrix)) {
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    }
    cairo_set_font_options(cairo, options);
    cairo_font_options_destroy(options);
}

void addGlyphPath(cairo_t* cairo, const RunFont& font, std::uint32_t glyph,
                  const cairo_matrix_t& matrix) {
    cairo_set_matrix(cairo, &matrix);
    setFont(cairo, font);
    const cairo_glyph_t placed{glyph, 0, 0};
    cairo_glyph_path(cairo, &placed, 1);
    cairo_identity_matrix(cairo);
}

}  // namespace orvane::platform
