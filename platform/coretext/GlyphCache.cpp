#include "platform/coretext/GlyphCache.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>

#include "platform/coretext/RunFont.h"
#include "platform/coretext/cairoText.h"

namespace orvane::platform {

namespace {

GlyphCoverage rasterize(const RunFont& font, std::uint32_t glyph, const GlyphCache::Linear& linear,
                        double x, double y) {
    GlyphCoverage coverage;
    const cairo_matrix_t matrix{linear.xx, linear.yx, linear.xy, linear.yy, x, y};

    const CairoContext measure = pathContext();
    addGlyphPath(measure.get(), font, glyph, matrix);
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_path_extents(measure.get(), &left, &top, &right, &bottom);
    if (!(left < right && top < bottom)) {
        return coverage;
    }
    coverage.left = static_cast<int>(std::floor(left));
    coverage.top = static_cast<int>(std::floor(top));
    coverage.width = static_cast<int>(std::ceil(right)) - coverage.left;
    coverage.height = static_cast<int>(std::ceil(bottom)) - coverage.top;

    const CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_A8, coverage.width, coverage.height));
    const CairoContext cairo(cairo_create(surface.get()));
    cairo_matrix_t moved = matrix;
    moved.x0 -= coverage.left;
    moved.y0 -= coverage.top;
    addGlyphPath(cairo.get(), font, glyph, moved);
    cairo_set_antialias(cairo.get(), antialiasOf(font));
    cairo_fill(cairo.get());
    cairo_surface_flush(surface.get());

    const unsigned char* const pixels = cairo_image_surface_get_data(surface.get());
    if (pixels == nullptr) {
        return {};
    }
    const int stride = cairo_image_surface_get_stride(surface.get());
    coverage.pixels.resize(static_cast<std::size_t>(coverage.width) *
                           static_cast<std::size_t>(coverage.height));
    for (int row = 0; row < coverage.height; ++row) {
        std::copy_n(pixels + row * stride, coverage.width,
                    coverage.pixels.begin() + row * coverage.width);
    }
    return coverage;
}

}  // namespace

GlyphCache::Strike::Strike(GlyphCache& cache, const RunFont& font, const Linear& linear)
    : cache_(cache), font_(&font), fontId_(font.id()), linear_(linear) {}

const GlyphCoverage& GlyphCache::Strike::coverage(std::uint32_t glyph, int phaseX, int phaseY) {
    const std::uint64_t key = std::uint64_t{glyph} << 8 | unsigned(phaseX) << 4 | unsigned(phaseY);
    const auto [entry, added] = glyphs_.try_emplace(key);
    if (added) {
        entry->second =
            rasterize(*font_, glyph, linear_, double(phaseX) / kPhases, double(phaseY) / kPhases);
        const std::size_t bytes = entry->second.pixels.size() + sizeof(*entry) + 32;
        byteCount_ += bytes;
        cache_.byteCount_ += bytes;
    }
    return entry->second;
}

GlyphCache::Strike& GlyphCache::strike(const RunFont& font, const Linear& linear) {
    while (byteCount_ > kMostBytes) {
        dropOldest();
    }
    auto strike = std::find_if(strikes_.begin(), strikes_.end(), [&](const auto& each) {
        return each->fontId_ == font.id() && each->linear_ == linear;
    });
    if (strike == strikes_.end()) {
        if (strikes_.size() >= kMostStrikes) {
            dropOldest();
        }
        strikes_.push_back(std::unique_ptr<Strike>(new Strike(*this, font, linear)));
        strike = strikes_.end() - 1;
    }
    (*strike)->usedAt_ = ++clock_;
    return **strike;
}

void GlyphCache::dropOldest() {
    const auto oldest =
        std::min_element(strikes_.begin(), strikes_.end(),
                         [](const auto& a, const auto& b) { return a->usedAt_ < b->usedAt_; });
    byteCount_ -= (*oldest)->byteCount_;
    strikes_.erase(oldest);
}

}  // namespace orvane::platform
