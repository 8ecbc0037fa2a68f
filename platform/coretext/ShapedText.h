#pragma once

#include <pango/pango.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/coretext/CFMutableAttributedString.h"

namespace orvane::platform {

class RunFont;

// The font of a character: the interface's default where none was set.
std::shared_ptr<const CTFont> fontOf(const CTAttributes& attributes);

struct PangoRelease {
    void operator()(PangoItem* item) const { pango_item_free(item); }
    void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};
using ItemPointer = std::unique_ptr<PangoItem, PangoRelease>;
using GlyphsPointer = std::unique_ptr<PangoGlyphString, PangoRelease>;

// A stretch of a paragraph in one font, one direction and one script, with its glyphs from left to
// right. Its item counts bytes from the paragraph's begin.
struct ShapedItem {
    ItemPointer item;
    GlyphsPointer glyphs;
    std::shared_ptr<const RunFont> font;
    bool isTab = false;

    int begin() const { return item->offset; }
    int end() const { return item->offset + item->length; }

    // The same stretch between two bytes of the paragraph, shaped by itself.
    ShapedItem part(const char* paragraph, int length, int from, int to) const;
};

// What lies between two separators.
struct ShapedParagraph {
    std::size_t begin = 0;  // bytes of the text
    std::size_t end = 0;    // without the separator
    std::size_t next = 0;   // where the next paragraph begins
    bool rightToLeft = false;
    std::vector<ShapedItem> items;  // as they are read
};

// The glyphs of a text: what is worked out once a change, from which lines are made at any width.
// Immutable. Internal to this room; made under the lock of FontMap.
class ShapedText {
public:
    static std::shared_ptr<const ShapedText> shape(
        std::shared_ptr<const std::string> text,
        const std::vector<CFMutableAttributedString::Run>& runs);

    // Under the lock, since fonts may go.
    ~ShapedText();

    const std::shared_ptr<const std::string>& text() const { return text_; }
    // None for an empty text. A separator at the end is followed by one more, empty paragraph.
    const std::vector<ShapedParagraph>& paragraphs() const { return paragraphs_; }

private:
    explicit ShapedText(std::shared_ptr<const std::string> text) : text_(std::move(text)) {}

    std::shared_ptr<const std::string> text_;
    std::vector<ShapedParagraph> paragraphs_;
};

}  // namespace orvane::platform
