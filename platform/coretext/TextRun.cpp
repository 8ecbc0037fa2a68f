#include "platform/coretext/TextRun.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/coregraphics/CairoCanvas.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/coretext/FontMap.h"
#include "platform/coretext/RunFont.h"
#include "platform/coretext/cairoText.h"

namespace orvane::platform {

namespace {

// Larger glyphs, in pixels, are filled as outlines: they cover so many pixels that a cached mask
// would save little.
constexpr double kLargestMasked = 160;
// Beyond these sizes, in pixels, glyphs are not recognizable, and FreeType and Cairo fail.
constexpr double kLargestOutline = 16384;
constexpr double kLargestPicture = 4096;
constexpr double kSmallest = 1.0 / 64;
// A mask of glyphs that would exceed this many pixels is painted, and another one begins.
constexpr std::int64_t kLargestMask = 1 << 18;
// More distant pixels are outside every canvas.
constexpr double kReach = 1 << 24;

bool isReachable(double x, double y) {
    return std::abs(x) < kReach && std::abs(y) < kReach;
}

Pixel pixelOf(double x, double y) {
    return {static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y))};
}

// Collects the coverage of glyphs and paints them together.
class MaskPainter {
public:
    explicit MaskPainter(cairo_t* cairo) : cairo_(cairo) {}

    void add(const GlyphCoverage& coverage, int x, int y) {
        if (coverage.pixels.empty()) {
            return;
        }
        const Box box{x + coverage.left, y + coverage.top, x + coverage.left + coverage.width,
                      y + coverage.top + coverage.height};
        const Box together = placed_.empty() ? box : box_.united(box);
        if (!placed_.empty() && together.area() > kLargestMask) {
            paint();
            box_ = box;
        } else {
            box_ = together;
        }
        placed_.push_back({&coverage, box.left, box.top});
    }

    void paint() {
        if (placed_.empty()) {
            return;
        }
        const int width = box_.right - box_.left;
        const int height = box_.bottom - box_.top;
        const int stride = (width + 3) & ~3;
        scratch_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0);
        for (const Placed& each : placed_) {
            std::uint8_t* const first =
                scratch_.data() + (each.top - box_.top) * stride + (each.left - box_.left);
            blit(*each.coverage, first, stride);
        }
        const CairoSurface mask(cairo_image_surface_create_for_data(
            scratch_.data(), CAIRO_FORMAT_A8, width, height, stride));
        cairo_mask_surface(cairo_, mask.get(), box_.left, box_.top);
        placed_.clear();
    }

private:
    struct Box {
        int left, top, right, bottom;
        Box united(const Box& other) const {
            return {std::min(left, other.left), std::min(top, other.top),
                    std::max(right, other.right), std::max(bottom, other.bottom)};
        }
        std::int64_t area() const { return std::int64_t{right - left} * (bottom - top); }
    };
    struct Placed {
        const GlyphCoverage* coverage;
        int left, top;
    };

    // In a pixel that two glyphs share, their coverages are added.
    static void blit(const GlyphCoverage& coverage, std::uint8_t* to, int stride) {
        const std::uint8_t* from = coverage.pixels.data();
        for (int row = 0; row < coverage.height; ++row, to += stride, from += coverage.width) {
            for (int i = 0; i < coverage.width; ++i) {
                const unsigned sum = unsigned{to[i]} + from[i];
                to[i] = static_cast<std::uint8_t>(std::min(sum, 255u));
            }
        }
    }

    cairo_t* cairo_;
    Box box_{};
    std::vector<Placed> placed_;
    std::vector<std::uint8_t> scratch_;
};

// Calls `visit` with the position of each visible glyph on the canvas.
template <typename Visit>
void forEachGlyph(const cairo_matrix_t& matrix, std::span<const TextGlyph> glyphs,
                  const TextRun::Piece& piece, const Visit& visit) {
    for (const TextGlyph& glyph : glyphs) {
        double x = piece.x + double{glyph.x};
        double y = -double{glyph.y};
        cairo_matrix_transform_point(&matrix, &x, &y);
        if (glyph.glyph != TextGlyph::kNone && isReachable(x, y)) {
            visit(glyph.glyph, x, y);
        }
    }
}

void paintMasked(cairo_t* cairo, const RunFont& font, const cairo_matrix_t& matrix,
                 std::span<const TextGlyph> glyphs, const TextRun::Piece& piece) {
    GlyphCache::Strike& strike =
        FontMap::Locked()->glyphs().strike(font, {matrix.xx, matrix.yx, -matrix.xy, -matrix.yy});
    MaskPainter painter(cairo);
    // Stems without antialiasing have equal widths only at whole pixels.
    const int phases = font.isAntialiased() ? GlyphCache::kPhases : 1;
    const auto toPhases = [phases](double v) {
        return static_cast<int>(std::floor(v * phases + 0.5)) * (GlyphCache::kPhases / phases);
    };
    forEachGlyph(matrix, glyphs, piece, [&](auto glyph, double x, double y) {
        const int phasesX = toPhases(x);
        const int phasesY = toPhases(y);
        const Pixel pixel{floorDivide(phasesX, GlyphCache::kPhases),
                          floorDivide(phasesY, GlyphCache::kPhases)};
        painter.add(strike.coverage(glyph, phasesX - pixel.x * GlyphCache::kPhases,
                                    phasesY - pixel.y * GlyphCache::kPhases),
                    pixel.x, pixel.y);
    });
    painter.paint();
}

void paintOutlines(cairo_t* cairo, const RunFont& font, const cairo_matrix_t& matrix,
                   std::span<const TextGlyph> glyphs, const TextRun::Piece& piece) {
    forEachGlyph(matrix, glyphs, piece, [&](auto glyph, double x, double y) {
        const Pixel origin = pixelOf(x, y);
        const CairoContext path = pathContext();
        addGlyphPath(path.get(), font, glyph,
                     {matrix.xx, matrix.yx, -matrix.xy, -matrix.yy, x - origin.x, y - origin.y});
        fillAlike(cairo, path.get(), origin, antialiasOf(font));
    });
}

void paintPictures(cairo_t* cairo, const RunFont& font, const cairo_matrix_t& matrix,
                   std::span<const TextGlyph> glyphs, const TextRun::Piece& piece) {
    std::vector<cairo_glyph_t> placed;
    placed.reserve(glyphs.size());
    for (const TextGlyph& glyph : glyphs) {
        if (glyph.glyph != TextGlyph::kNone) {
            placed.push_back({glyph.glyph, piece.x + double{glyph.x}, double{glyph.y}});
        }
    }
    cairo_set_matrix(cairo, &matrix);
    cairo_scale(cairo, 1, -1);
    setFont(cairo, font);
    cairo_show_glyphs(cairo, placed.data(), static_cast<int>(placed.size()));
    cairo_identity_matrix(cairo);
}

// Paints a bar along the whole run, with its upper edge `top` above the baseline. It is divided
// into parts that do not exceed Cairo's range under any transformation.
void paintBar(cairo_t* cairo, const cairo_matrix_t& matrix, const TextRun& run, double top,
              double thickness, const CGRect& clip) {
    constexpr double kLongest = 4096;
    const double clipEnd = clip.origin.x + clip.size.width;
    const double skipped = std::max(0.0, std::floor((clip.origin.x - run.x) / kLongest));
    for (double begin = skipped * kLongest; begin < run.width; begin += kLongest) {
        const double left = run.x + begin;
        if (left > clipEnd) {
            break;
        }
        double x = left;
        double y = top;
        cairo_matrix_transform_point(&matrix, &x, &y);
        if (!isReachable(x, y)) {
            continue;
        }
        const Pixel origin = pixelOf(x, y);
        const CairoContext path = pathContext();
        const cairo_matrix_t placed{matrix.xx, matrix.yx,    matrix.xy,
                                    matrix.yy, x - origin.x, y - origin.y};
        cairo_set_matrix(path.get(), &placed);
        cairo_rectangle(path.get(), 0, -thickness, std::min(kLongest, run.width - begin),
                        thickness);
        cairo_identity_matrix(path.get());
        fillAlike(cairo, path.get(), origin, CAIRO_ANTIALIAS_BEST);
    }
}

// The longest and the shortest image of a unit vector.
std::pair<double, double> stretch(const cairo_matrix_t& m) {
    const double sum = m.xx * m.xx + m.yx * m.yx + m.xy * m.xy + m.yy * m.yy;
    const double determinant = m.xx * m.yy - m.xy * m.yx;
    const double root = std::sqrt(std::max(0.0, sum * sum / 4 - determinant * determinant));
    return {std::sqrt(sum / 2 + root), std::sqrt(std::max(0.0, sum / 2 - root))};
}

}  // namespace

void paintRun(CairoCanvas& canvas, const TextRun& run, std::span<const TextGlyph> glyphs,
              const CGRect& clip) {
    cairo_t* const cairo = canvas.cairo;
    const RunFont& font = *run.font;
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    const auto [longest, shortest] = stretch(matrix);
    const double size = font.size() * longest;
    const double largest = font.isColor() ? kLargestPicture : kLargestOutline;
    // The comparison is false for NaN.
    if (!(size <= largest && font.size() * shortest >= kSmallest)) {
        return;
    }
    cairo_set_source_rgba(cairo, run.color.red, run.color.green, run.color.blue, run.color.alpha);
    cairo_identity_matrix(cairo);
    if (run.underline) {
        paintBar(cairo, matrix, run, -font.underlineOffset(), font.underlineThickness(), clip);
    }
    const auto paint = font.isColor()           ? paintPictures
                       : size <= kLargestMasked ? paintMasked
                                                : paintOutlines;
    const CGRect& box = font.glyphBox();
    for (const TextRun::Piece& piece : run.pieces) {
        const bool seen = piece.x + box.origin.x < clip.origin.x + clip.size.width &&
                          piece.x + piece.width + box.origin.x + box.size.width > clip.origin.x;
        if (seen) {
            paint(cairo, font, matrix, glyphs.subspan(piece.first, piece.count), piece);
        }
    }
    if (run.strikethrough) {
        paintBar(cairo, matrix, run, font.ascent() * 0.3 + font.underlineThickness() / 2,
                 font.underlineThickness(), clip);
    }
    cairo_set_matrix(cairo, &matrix);
}

}  // namespace orvane::platform
