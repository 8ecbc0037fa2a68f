#pragma once

#include <pango/pango.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane::platform {

class ShapedText;
struct ShapedParagraph;

// The distance from one tab stop to the next, in user units: the interface's own.
inline constexpr double kTabInterval = 28;
// How far a tab reaches that begins at `x`; both in the units of the shaping library.
std::int64_t tabAdvance(std::int64_t x);

// Finds where a paragraph is broken into lines of a width: at the last place before the limit where
// its script allows a break, inside a word when the word alone is longer than a line, and at forced
// breaks. White space at a break hangs over the end of its line and is neither drawn nor counted.
//
// Takes time in proportion to the paragraph, whatever the width. Internal to this room.
class LineBreaker {
public:
    // Bytes of the paragraph.
    struct Line {
        int begin = 0;
        int end = 0;   // without the white space that hangs
        int next = 0;  // where the next line begins
    };

    // `width` in user units.
    LineBreaker(const ShapedText& text, const ShapedParagraph& paragraph, double width);

    // The next line; the last one ends where the paragraph ends. An empty paragraph is one line.
    Line next();
    bool atEnd() const { return started_ && position_ >= length_; }

private:
    struct Character {
        int byte;
        int width;
    };

    void readCharacters(const ShapedParagraph& paragraph);
    std::size_t findBreak(std::size_t first) const;

    const char* paragraph_;
    int length_;
    int position_ = 0;
    bool started_ = false;
    std::int64_t limit_;
    // Empty where the paragraph is one line in any case.
    std::vector<Character> characters_;
    std::vector<PangoLogAttr> attributes_;
    std::size_t character_ = 0;
};

}  // namespace orvane::platform
