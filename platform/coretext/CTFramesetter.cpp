#include "platform/coretext/CTFramesetter.h"

#include <algorithm>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTLine.h"
#include "platform/coretext/FontMap.h"
#include "platform/coretext/LineBuilder.h"
#include "platform/coretext/RunFont.h"
#include "platform/coretext/ShapedText.h"

namespace orvane::platform {

namespace {

// How far a line may extend below the rectangle: the caller's rectangle is often the sum of the
// same numbers in another order.
constexpr double kTolerance = 1e-3;

// Natural alignment is the side on which the paragraph's script begins.
CTTextAlignment resolved(CTTextAlignment alignment, bool rightToLeft) {
    if (alignment != CTTextAlignment::Natural) {
        return alignment;
    }
    return rightToLeft ? CTTextAlignment::Right : CTTextAlignment::Left;
}

double heightOf(const CTLine::TypographicBounds& bounds) {
    return bounds.ascent + bounds.descent + bounds.leading;
}

}  // namespace

CTFramesetter::CTFramesetter(const CFMutableAttributedString& string) {
    string.shapedText();  // shaped here so that the copy shares the result
    string_ = string;
}

const std::vector<CTFramesetter::Line>& CTFramesetter::linesOf(double width) const {
    // Lines that were broken at a larger width and fit into this one would be broken alike.
    if (width == width_ || (width < width_ && width >= longest_ && longest_ > 0)) {
        return lines_;
    }
    width_ = width;
    longest_ = 0;
    lines_.clear();
    if (!(width > 0)) {
        return lines_;
    }
    FontMap::Locked map;
    const auto shapedText = string_.shapedText();
    for (const auto& [paragraph, bytes] : shapedText->linesOf(width)) {
        LineBuilder builder(string_, LineBuilder::Purpose::HitTesting);
        builder.add(*paragraph, bytes.begin, bytes.end);
        const std::size_t begin = paragraph->begin + static_cast<std::size_t>(bytes.begin);
        const auto length = static_cast<std::size_t>(bytes.next - bytes.begin);
        lines_.push_back({builder.finish({begin, length}),
                          resolved(string_.runAt(paragraph->begin)->attributes.alignment,
                                   paragraph->rightToLeft)});
        longest_ = std::max(longest_, lines_.back().line->typographicBounds().width);
    }
    return lines_;
}

CGSize CTFramesetter::suggestFrameSize(double width) const {
    CGSize size;
    for (const Line& each : linesOf(width)) {
        const CTLine::TypographicBounds& bounds = each.line->typographicBounds();
        size.width = std::max(size.width, bounds.width);
        size.height += heightOf(bounds);
    }
    return size;
}

std::shared_ptr<const CTFrame> CTFramesetter::createFrame(const CGRect& rect) const {
    std::vector<CTFrame::PlacedLine> placed;
    double top = rect.origin.y + rect.size.height;
    for (const Line& each : linesOf(rect.size.width)) {
        const CTLine::TypographicBounds& bounds = each.line->typographicBounds();
        const double bottom = top - heightOf(bounds);
        if (!(bottom >= rect.origin.y - kTolerance)) {
            break;
        }
        const double room = rect.size.width - bounds.width;
        double x = rect.origin.x;
        if (each.alignment != CTTextAlignment::Left) {
            x += each.alignment == CTTextAlignment::Right ? room : room / 2;
        }
        placed.push_back({each.line, {x, top - bounds.ascent}, bottom});
        top = bottom;
    }
    return std::make_shared<const CTFrame>(std::move(placed));
}

}  // namespace orvane::platform
