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

// A glyph in its place. `y` runs down from the baseline. `cluster` is the byte of the text that the
// glyph begins to stand for.
struct TextGlyph {
    // Takes its place and shows nothing.
    static constexpr std::uint32_t kNone = 0xffffffff;

    std::uint32_t glyph;
    float x, y;
    float advance;
    std::uint32_t cluster;
};

// Neighbouring glyphs of a line in one font with the same attributes, from left to right. The
// glyphs are in pieces, each with its own origin: a line may be longer than a float counts, and
// what lies outside the clip is passed over by pieces.
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
    int level = 0;        // odd ones are read from the right to the left
    std::size_t end = 0;  // the byte of the text behind its last character
    double x = 0;
    double width = 0;
    std::vector<Piece> pieces;

    bool isRightToLeft() const { return level % 2 == 1; }
};

// Paints a run of `glyphs` at 0, 0 of the user space in force, y up. `clip` is the box of what is
// to be seen, in that space; a piece is painted as a whole or not at all.
void paintRun(CairoCanvas& canvas, const TextRun& run, std::span<const TextGlyph> glyphs,
              const CGRect& clip);

}  // namespace orvane::platform
