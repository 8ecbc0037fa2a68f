#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGDrawable.h"
#include "platform/coretext/CFRange.h"
#include "platform/coretext/TextRun.h"

namespace orvane::platform {

class CFMutableAttributedString;

// A line of shaped text. Immutable: created once per change and drawn as it is. The origin of its
// space is the left end of the baseline; the y axis is up.
class ORVANE_EXPORT CTLine final : public CGDrawable {
public:
    struct TypographicBounds {
        double width = 0;
        double ascent = 0;
        double descent = 0;
        double leading = 0;
    };

    // Puts the whole text in one line, ignoring line breaks in it.
    static std::shared_ptr<const CTLine> createWithAttributedString(
        const CFMutableAttributedString& string);
    // The same line without the places of its characters: stringIndexForPosition returns none and
    // offsetForStringIndex returns zero. It takes less memory.
    static std::shared_ptr<const CTLine> createForPainting(const CFMutableAttributedString& string);

    ~CTLine() override;

    // The width includes trailing white space. Ascent, descent and leading are the largest of all
    // fonts in the line, including fallback fonts.
    const TypographicBounds& typographicBounds() const { return bounds_; }

    // The bytes of the text in this line.
    CFRange stringRange() const { return range_; }

    // The first byte of the character at `x`; of the nearest character for an `x` outside the line.
    // None for a line without characters.
    std::optional<std::size_t> stringIndexForPosition(double x) const;

    // Where the character that contains the byte begins, in reading order: its left side, or its
    // right side in right-to-left text. For a byte after the line, where its last character ends.
    double offsetForStringIndex(std::size_t index) const;

    // A box around the glyphs and bars that are drawn, from the measures of the glyphs. Rendering
    // may reach one pixel further.
    const CGRect& imageBounds() const { return imageBounds_; }

    void paint(CairoCanvas& canvas) const override;
    CGRect inkBounds() const override { return inkBounds_; }
    std::string description() const override;

private:
    friend class LineBuilder;
    CTLine() = default;

    std::size_t characterInCluster(const TextRun& run, std::uint32_t glyph, double x) const;
    double offsetInRun(const TextRun& run, std::size_t index) const;

    std::shared_ptr<const std::string> text_;
    CFRange range_;
    TypographicBounds bounds_;
    CGRect inkBounds_;
    CGRect imageBounds_;
    std::vector<TextRun> runs_;  // from left to right
    std::vector<TextGlyph> glyphs_;
    std::vector<GlyphExtent> extents_;  // of the glyphs; empty if the line is only painted
};

}  // namespace orvane::platform
