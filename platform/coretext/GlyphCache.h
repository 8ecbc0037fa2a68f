#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace orvane::platform {

class RunFont;

// How much of each pixel a glyph covers, 0 to 255, by rows from the top; `left` and `top` are the
// place of the first pixel relative to the whole pixel that the glyph's origin lies in.
struct GlyphCoverage {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// The coverage of glyphs as they were painted lately. A glyph is kept for each transformation
// without its translation, and for each quarter of a pixel that its origin can stand at: text moves
// smoothly, and a picture does not depend on what was painted before.
class GlyphCache {
public:
    static constexpr int kPhases = 4;

    // The linear part of a transformation from glyph space (y down) to pixels; finite numbers.
    struct Linear {
        double xx, yx, xy, yy;
        friend bool operator==(const Linear&, const Linear&) = default;
    };

    // A font under a transformation. Good until the cache is asked for another.
    class Strike {
    public:
        // Phases from 0 to kPhases - 1. Good for as long as the strike is.
        const GlyphCoverage& coverage(std::uint32_t glyph, int phaseX, int phaseY);

    private:
        friend class GlyphCache;
        Strike(GlyphCache& cache, const RunFont& font, const Linear& linear);

        GlyphCache& cache_;
        const RunFont* font_;  // whoever asks for its strike keeps it alive
        std::uint64_t fontId_;
        Linear linear_;
        std::uint64_t usedAt_ = 0;
        std::size_t byteCount_ = 0;
        std::unordered_map<std::uint64_t, GlyphCoverage> glyphs_;
    };

    Strike& strike(const RunFont& font, const Linear& linear);

private:
    static constexpr std::size_t kMostStrikes = 64;
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20;

    void dropOldest();

    std::vector<std::unique_ptr<Strike>> strikes_;
    std::uint64_t clock_ = 0;
    std::size_t byteCount_ = 0;
};

}  // namespace orvane::platform
