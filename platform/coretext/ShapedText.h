#pragma once

#include <pango/pango.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/LineBreaker.h"

namespace orvane::platform {

class RunFont;

// The font of a character, or the default font.
std::shared_ptr<const CTFont> fontOf(const CTAttributes& attributes);

struct PangoRelease {
    void operator()(PangoItem* item) const { pango_item_free(item); }
    void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};
using ItemPointer = std::unique_ptr<PangoItem, PangoRelease>;
using GlyphsPointer = std::unique_ptr<PangoGlyphString, PangoRelease>;

// A part of a paragraph in one font, one direction and one script, with its glyphs from left to
// right. Its item counts bytes from the beginning of the paragraph.
struct ShapedItem {
    ItemPointer item;
    GlyphsPointer glyphs;
    std::shared_ptr<const RunFont> font;
    bool isTab = false;

    int begin() const { return item->offset; }
    int end() const { return item->offset + item->length; }

    // Shapes the part between two bytes of the paragraph separately.
    ShapedItem part(const char* paragraph, int length, int from, int to) const;
};

// The text between two paragraph separators.
struct ShapedParagraph {
    std::size_t begin = 0;  // bytes of the text
    std::size_t end = 0;    // without the separator
    std::size_t next = 0;   // the beginning of the next paragraph
    bool rightToLeft = false;
    std::vector<ShapedItem> items;  // in reading order
};

// The glyphs of a text, computed once per change. Lines of any width are made from them. Immutable.
// Internal to this module; created under the lock of FontMap.
class ShapedText {
public:
    static std::shared_ptr<const ShapedText> shape(
        std::shared_ptr<const std::string> text,
        const std::vector<CFMutableAttributedString::Run>& runs);

    // Takes the lock, because fonts may be released.
    ~ShapedText();

    const std::shared_ptr<const std::string>& text() const { return text_; }
    // Empty for an empty text. After a separator at the end there is one more, empty paragraph.
    const std::vector<ShapedParagraph>& paragraphs() const { return paragraphs_; }

    // A line of a paragraph, in bytes of the paragraph.
    struct Line {
        const ShapedParagraph* paragraph;
        LineBreaker::Line bytes;
    };
    // The lines of a width in user units. Those of the last width are kept, because they do not
    // depend on colors. Called under the lock of FontMap.
    const std::vector<Line>& linesOf(double width) const;

private:
    explicit ShapedText(std::shared_ptr<const std::string> text) : text_(std::move(text)) {}

    std::shared_ptr<const std::string> text_;
    std::vector<ShapedParagraph> paragraphs_;
    mutable double width_ = 0;
    mutable std::vector<Line> lines_;
};

}  // namespace orvane::platform
