#pragma once

#include <pango/pango.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane::platform {

class ShapedText;
struct ShapedParagraph;

// The distance between tab stops, in user units, as the interface defines it.
inline constexpr double kTabInterval = 28;
// The width of a tab that begins at `x`. Both are in Pango units.
std::int64_t tabAdvance(std::int64_t x);

// Divides a paragraph into lines of a given width. Lines end at the last allowed break before the
// limit, inside a word only if the word is longer than a line, and at forced breaks. White space at
// a break extends beyond the end of its line and is neither drawn nor counted.
//
// The time is proportional to the length of the paragraph. Internal to this module.
class LineBreaker {
public:
    // Bytes of the paragraph.
    struct Line {
        int begin = 0;
        int end = 0;   // without trailing white space
        int next = 0;  // where the next line begins
    };

    // `width` in user units.
    LineBreaker(const ShapedText& text, const ShapedParagraph& paragraph, double width);

    // Returns the next line. The last line ends at the end of the paragraph. An empty paragraph has
    // one line.
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
    // Empty if the paragraph cannot have more than one line.
    std::vector<Character> characters_;
    std::vector<PangoLogAttr> attributes_;
    std::size_t character_ = 0;
};

}  // namespace orvane::platform
