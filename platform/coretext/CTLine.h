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

// A line of shaped text. Immutable: made once a change, drawn as it is. Its own space has the
// origin at the left end of the baseline and the y axis up.
class ORVANE_EXPORT CTLine final : public CGDrawable {
public:
    struct TypographicBounds {
        double width = 0;
        double ascent = 0;
        double descent = 0;
        double leading = 0;
    };

    // The whole text in one line, whatever separators are in it.
    static std::shared_ptr<const CTLine> createWithAttributedString(
        const CFMutableAttributedString& string);

    ~CTLine() override;

    // The width counts white space at the end. Ascent, descent and leading are the largest of the
    // fonts in the line, those that stand in for missing characters included.
    const TypographicBounds& typographicBounds() const { return bounds_; }

    // The bytes of the text that the line stands for.
    CFRange stringRange() const { return range_; }

    // The byte where the character begins whose cell `x` lies in. To the left and right of the line
    // it is the character at that end. Nothing for a line without characters.
    std::optional<std::size_t> stringIndexForPosition(double x) const;

    void paint(CairoCanvas& canvas) const override;
    CGRect inkBounds() const override { return inkBounds_; }
    std::string description() const override;

private:
    friend class LineBuilder;
    CTLine() = default;

    std::size_t characterInCluster(const TextRun& run, std::uint32_t glyph, double x) const;

    std::shared_ptr<const std::string> text_;
    CFRange range_;
    TypographicBounds bounds_;
    CGRect inkBounds_;
    std::vector<TextRun> runs_;  // from left to right
    std::vector<TextGlyph> glyphs_;
};

}  // namespace orvane::platform
