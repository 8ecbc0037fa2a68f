#include "platform/coretext/LineBreaker.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "platform/coretext/ShapedText.h"

namespace orvane::platform {

namespace {

constexpr std::int64_t kUnlimited = std::numeric_limits<std::int64_t>::max() / 4;

// Characters that force a line break without ending the paragraph: vertical tab, form feed and line
// separator.
bool hasForcedBreak(std::string_view text) {
    return text.find_first_of("\v\f") != text.npos || text.find("\xE2\x80\xA8") != text.npos;
}

std::int64_t limitOf(double width) {
    // One unit of tolerance, so that a text fits into its own measured width.
    return width < 1e12 ? static_cast<std::int64_t>(width * PANGO_SCALE) + 1 : kUnlimited;
}

}  // namespace

std::int64_t tabAdvance(std::int64_t x) {
    constexpr auto interval = static_cast<std::int64_t>(kTabInterval * PANGO_SCALE);
    return interval - x % interval;
}

LineBreaker::LineBreaker(const ShapedText& text, const ShapedParagraph& paragraph, double width)
    : paragraph_(text.text()->data() + paragraph.begin),
      length_(static_cast<int>(paragraph.end - paragraph.begin)),
      limit_(limitOf(width)) {
    const std::string_view content(paragraph_, static_cast<std::size_t>(length_));
    if (limit_ != kUnlimited || hasForcedBreak(content)) {
        readCharacters(paragraph);
    }
}

void LineBreaker::readCharacters(const ShapedParagraph& paragraph) {
    const char* const end = paragraph_ + length_;
    for (const char* at = paragraph_; at < end; at = g_utf8_next_char(at)) {
        characters_.push_back({static_cast<int>(at - paragraph_), 0});
    }
    attributes_.resize(characters_.size() + 1);
    pango_get_log_attrs(paragraph_, length_, -1, pango_language_get_default(), attributes_.data(),
                        static_cast<int>(attributes_.size()));

    std::vector<int> widths;
    std::size_t character = 0;
    for (const ShapedItem& item : paragraph.items) {
        while (character < characters_.size() && characters_[character].byte < item.begin()) {
            ++character;
        }
        widths.resize(static_cast<std::size_t>(item.item->num_chars));
        pango_glyph_string_get_logical_widths(item.glyphs.get(), paragraph_ + item.begin(),
                                              item.item->length, item.item->analysis.level,
                                              widths.data());
        for (const int width : widths) {
            characters_[character++].width = width;
        }
    }
}

std::size_t LineBreaker::findBreak(std::size_t first) const {
    std::int64_t x = 0;
    std::size_t lastBreak = first;
    std::size_t lastCursor = first;
    for (std::size_t i = first; i < characters_.size(); ++i) {
        const PangoLogAttr& attribute = attributes_[i];
        if (i > first) {
            if (attribute.is_mandatory_break) {
                return i;
            }
            if (attribute.is_line_break) {
                lastBreak = i;
            }
            if (attribute.is_cursor_position) {
                lastCursor = i;
            }
        }
        const bool tab = paragraph_[characters_[i].byte] == '\t';
        x += tab ? tabAdvance(x) : characters_[i].width;
        if (x > limit_ && !attribute.is_white) {
            if (lastBreak > first) {
                return lastBreak;
            }
            if (lastCursor > first) {
                return lastCursor;
            }
            // A single character that is wider than the line has a line of its own.
        }
    }
    return characters_.size();
}

LineBreaker::Line LineBreaker::next() {
    started_ = true;
    Line line{position_, length_, length_};
    if (!characters_.empty()) {
        const std::size_t stop = findBreak(character_);
        if (stop < characters_.size()) {
            std::size_t last = stop;
            while (last > character_ && attributes_[last - 1].is_white) {
                --last;
            }
            line.next = characters_[stop].byte;
            line.end = characters_[last].byte;
        }
        character_ = stop;
    }
    position_ = line.next;
    return line;
}

}  // namespace orvane::platform
