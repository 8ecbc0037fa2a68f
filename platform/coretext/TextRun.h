#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class RunFont;
struct CairoCanvas;

// A glyph and its position; `y` is down from the baseline.
struct TextGlyph {
    // A glyph that takes space and draws nothing.
    static constexpr std::uint32_t kNone = 0xffffffff;

    std::uint32_t glyph;
    float x, y;
};

// What a glyph represents: `cluster` is the first byte of its text.
struct GlyphExtent {
    float advance;
    std::uint32_t cluster;
};

// Adjacent glyphs of a line in one font with the same attributes, from left to right. They are
// divided into pieces with their own origins, because a line may exceed the precision of float, and
// pieces outside the clip are skipped.
struct TextRun {
    static constexpr std::size_t kGlyphsInPiece = 64;

    struct Piece {
        double x;
        double width;
        std::uint32_t first;
        std::uint32_t count;
    };

    std::shared_ptr<const RunFont> font;
    CGColor color;
    bool underline = false;
    bool strikethrough = false;
    int level = 0;        // odd levels are right to left
    std::size_t end = 0;  // the byte after its last character
    double x = 0;
    double width = 0;
    std::vector<Piece> pieces;

    bool isRightToLeft() const { return level % 2 == 1; }
};

// Paints a run at (0, 0) of the current user space, y axis up. `clip` is the visible box in that
// space; pieces outside it are skipped.
void paintRun(CairoCanvas& canvas, const TextRun& run, std::span<const TextGlyph> glyphs,
              const CGRect& clip);

}  // namespace orvane::platform
