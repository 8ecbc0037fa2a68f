#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace orvane::platform {

class RunFont;

// The coverage of each pixel by a glyph, 0 to 255, in rows from the top. `left` and `top` are the
// position of the first pixel relative to the whole pixel that contains the glyph's origin.
struct GlyphCoverage {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// The coverage of recently painted glyphs. It is kept separately for each linear transformation and
// each quarter of a pixel of the glyph's origin, so that text moves smoothly and a picture does not
// depend on what was painted before.
class GlyphCache {
public:
    static constexpr int kPhases = 4;

    // The linear part of a transformation from glyph space (y down) to pixels. All numbers are
    // finite.
    struct Linear {
        double xx, yx, xy, yy;
        friend bool operator==(const Linear&, const Linear&) = default;
    };

    // A font under a transformation. Valid until the next call of strike().
    class Strike {
    public:
        // Phases are from 0 to kPhases - 1. The result is valid as long as the strike.
        const GlyphCoverage& coverage(std::uint32_t glyph, int phaseX, int phaseY);

    private:
        friend class GlyphCache;
        Strike(GlyphCache& cache, const RunFont& font, const Linear& linear);

        GlyphCache& cache_;
        const RunFont* font_;  // kept alive by the caller of strike()
        std::uint64_t fontId_;
        Linear linear_;
        std::uint64_t usedAt_ = 0;
        std::size_t byteCount_ = 0;
        std::unordered_map<std::uint64_t, GlyphCoverage> glyphs_;
    };

    Strike& strike(const RunFont& font, const Linear& linear);

    std::size_t byteCount() const { return byteCount_; }

private:
    static constexpr std::size_t kMostStrikes = 64;
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20;

    void dropOldest();

    std::vector<std::unique_ptr<Strike>> strikes_;
    std::uint64_t clock_ = 0;
    std::size_t byteCount_ = 0;
};

}  // namespace orvane::platform
