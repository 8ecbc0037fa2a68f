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

// The attributes of a character. A missing attribute means the default: black, the default font, no
// underline, natural alignment.
struct CTAttributes {
    std::shared_ptr<const CTFont> font;
    std::optional<CGColor> foregroundColor;
    // Stored but not used: text is stroked only if a stroke width is set, which no caller does.
    std::optional<CGColor> strokeColor;
    bool underline = false;
    bool strikethrough = false;
    CTTextAlignment alignment = CTTextAlignment::Natural;

    friend bool operator==(const CTAttributes&, const CTAttributes&) = default;
};

// Text with attributes for ranges of it. Attributes belong to characters: setting them for an empty
// range has no effect, and they are removed with their text.
//
// Used on one thread at a time.
class ORVANE_EXPORT CFMutableAttributedString {
public:
    struct Run {
        CFRange range;
        CTAttributes attributes;
    };

    // Replaces the whole text. The new text takes the attributes of the previous first character.
    // Bytes that are not valid UTF-8, and zero bytes, become the replacement character.
    void replaceString(std::string_view text);
    // Appends text with its own attributes.
    void append(std::string_view text, const CTAttributes& attributes);

    const std::string& string() const { return *text_; }
    std::size_t length() const { return text_->size(); }
    CFRange range() const { return {0, length()}; }

    // Parts of `range` beyond the text are ignored. An end inside a character moves to the
    // beginning of that character.
    void setFont(CFRange range, const std::shared_ptr<const CTFont>& font);
    void setForegroundColor(CFRange range, const CGColor& color);
    void setStrokeColor(CFRange range, const CGColor& color);
    void setUnderline(CFRange range, bool underline);
    void setAlignment(CFRange range, CTTextAlignment alignment);

    // The runs in order. They have no gaps, cover the whole text, and adjacent ones differ.
    const std::vector<Run>& runs() const { return runs_; }
    // The run that contains the byte; the last one for a position at the end. Null for an empty
    // text.
    const Run* runAt(std::size_t location) const;

    // The glyphs of the text, for the lines and frames of this module. The text is shaped by the
    // first call after a change of text or fonts.
    std::shared_ptr<const ShapedText> shapedText() const;

private:
    template <typename Change>
    void change(CFRange range, Change&& change);
    void splitAt(std::size_t location);

    // Shared with the lines made from it; a change copies a shared string first.
    std::shared_ptr<std::string> text_ = std::make_shared<std::string>();
    std::vector<Run> runs_;
    mutable std::shared_ptr<const ShapedText> shapedText_;
};

}  // namespace orvane::platform
