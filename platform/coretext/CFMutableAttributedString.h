#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coretext/CFRange.h"
#include "platform/coretext/CTParagraphStyle.h"

namespace orvane::platform {

class CTFont;
class ShapedText;

// What a character is drawn with. A missing attribute stands for the interface's default: black,
// the default font, no underline, natural alignment.
struct CTAttributes {
    std::shared_ptr<const CTFont> font;
    std::optional<CGColor> foregroundColor;
    // Kept, and read by nothing: a text is stroked only under a stroke width, which no caller sets.
    std::optional<CGColor> strokeColor;
    bool underline = false;
    bool strikethrough = false;
    CTTextAlignment alignment = CTTextAlignment::Natural;

    friend bool operator==(const CTAttributes&, const CTAttributes&) = default;
};

// Text with attributes over ranges of it. Attributes belong to characters: set over an empty range
// they go nowhere, and they leave with the text they were set on.
//
// Used on one thread at a time.
class ORVANE_EXPORT CFMutableAttributedString {
public:
    struct Run {
        CFRange range;
        CTAttributes attributes;
    };

    // Replaces the whole text. The new one takes the attributes of the old first character. Bytes
    // that are not UTF-8, zeros among them, become the replacement character.
    void replaceString(std::string_view text);
    // Adds text with attributes of its own.
    void append(std::string_view text, const CTAttributes& attributes);

    const std::string& string() const { return *text_; }
    std::size_t length() const { return text_->size(); }
    CFRange range() const { return {0, length()}; }

    // Parts of `range` beyond the text are ignored; an end inside a character moves to its begin.
    void setFont(CFRange range, const std::shared_ptr<const CTFont>& font);
    void setForegroundColor(CFRange range, const CGColor& color);
    void setStrokeColor(CFRange range, const CGColor& color);
    void setUnderline(CFRange range, bool underline);
    void setAlignment(CFRange range, CTTextAlignment alignment);

    // In order, without gaps, together the whole text; neighbours differ.
    const std::vector<Run>& runs() const { return runs_; }
    // The run that holds the byte; the last one for a position at the end. None in an empty text.
    const Run* runAt(std::size_t location) const;

    // The glyphs of the text, for the lines and frames of this room: shaped at the first call after
    // a change of text or fonts.
    std::shared_ptr<const ShapedText> shapedText() const;

private:
    template <typename Change>
    void change(CFRange range, Change&& change);
    void splitAt(std::size_t location);

    // Shared with the lines made from it; a change while it is shared makes a new one.
    std::shared_ptr<std::string> text_ = std::make_shared<std::string>();
    std::vector<Run> runs_;
    mutable std::shared_ptr<const ShapedText> shapedText_;
};

}  // namespace orvane::platform
