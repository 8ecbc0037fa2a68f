#include "platform/appkit/NSTextLayout.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/appkit/NSTextField.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"
#include "platform/coretext/TextBreaks.h"

namespace orvane::platform {

namespace {

constexpr std::string_view kDot = "\xE2\x97\x8F";  // U+25CF, as in GTK

// The share of the free space that is before a line.
double startOf(CTTextAlignment alignment) {
    return alignment == CTTextAlignment::Right ? 1 : alignment == CTTextAlignment::Center ? 0.5 : 0;
}

}  // namespace

NSTextLayout::NSTextLayout(Kind kind, const std::string& text, const NSTextFieldStyle& style,
                           bool isEnabled, double width)
    : shown_(text) {
    if (kind == Kind::Dots) {
        const TextBreaks breaks(text);
        shown_.clear();
        for (std::size_t at = 0; at < text.size();) {
            at = breaks.nextCharacter(at);
            ends_.push_back(at);
            shown_ += kDot;
        }
    }
    CTAttributes attributes;
    attributes.font = CTFont::createWithName(style.fontName, style.fontSize);
    CGColor color = style.textColor;
    color.alpha *= isEnabled ? 1 : 0.5;
    attributes.foregroundColor = color;
    attributes.alignment = style.alignment;
    const double ascent = attributes.font->ascent();
    const double lineHeight = ascent + attributes.font->descent() + attributes.font->leading();
    CFMutableAttributedString string;
    string.append(shown_, attributes);

    if (shown_.empty()) {
        const double x = std::max(width, 0.0) * startOf(style.alignment);
        lines_.push_back({nullptr, {}, {x, 0}, ascent, lineHeight});
    } else if (kind != Kind::Wrapped) {
        const auto line = CTLine::createWithAttributedString(string);
        const CTLine::TypographicBounds& bounds = line->typographicBounds();
        const double x = std::max(width - bounds.width, 0.0) * startOf(style.alignment);
        lines_.push_back({line,
                          {0, shown_.size()},
                          {x, 0},
                          bounds.ascent,
                          bounds.ascent + bounds.descent + bounds.leading});
    } else {
        const CTFramesetter framesetter(string);
        const double height = framesetter.suggestFrameSize(width).height;
        double top = 0;
        const auto frame = framesetter.createFrame({{0, 0}, {width, height}});
        for (const CTFrame::PlacedLine& each : frame->lines()) {
            const double bottom = height - each.bottom;
            CFRange range = each.line->stringRange();
            if (range.length > 0 && shown_[range.end() - 1] == '\n') {
                --range.length;
            }
            lines_.push_back({each.line,
                              range,
                              {each.origin.x, top},
                              each.line->typographicBounds().ascent,
                              bottom - top});
            top = bottom;
        }
        if (lines_.empty()) {  // there is no width
            lines_.push_back({nullptr, {0, shown_.size()}, {0, 0}, ascent, lineHeight});
        }
    }
    for (const Line& line : lines_) {
        const double lineWidth = line.line ? line.line->typographicBounds().width : 0;
        size_.width = std::max(size_.width, line.origin.x + lineWidth);
        size_.height += line.height;
    }
}

NSTextLayout::~NSTextLayout() = default;

std::size_t NSTextLayout::toShown(std::size_t position) const {
    if (ends_.empty()) {
        return std::min(position, shown_.size());
    }
    const auto after = std::ranges::upper_bound(ends_, position);
    return static_cast<std::size_t>(after - ends_.begin()) * kDot.size();
}

std::size_t NSTextLayout::fromShown(std::size_t shown) const {
    if (ends_.empty()) {
        return shown;
    }
    const std::size_t dots = shown / kDot.size();
    return dots == 0 ? 0 : ends_[dots - 1];
}

// The first of two lines for the position between them, unless a line break is there.
std::size_t NSTextLayout::lineIndexAt(std::size_t shown) const {
    const auto after = std::partition_point(lines_.begin(), lines_.end(), [&](const Line& line) {
        return line.range.location <= shown;
    });
    return after == lines_.begin() ? 0 : static_cast<std::size_t>(after - lines_.begin()) - 1;
}

CGRect NSTextLayout::caretAt(std::size_t position) const {
    const std::size_t shown = toShown(position);
    const Line& line = lines_[lineIndexAt(shown)];
    const double x = line.line ? line.line->offsetForStringIndex(shown) : 0;
    return {{line.origin.x + x, line.origin.y}, {0, line.height}};
}

std::size_t NSTextLayout::positionAt(CGPoint point) const {
    const auto below = std::partition_point(
        lines_.begin(), lines_.end() - 1,
        [&](const Line& line) { return line.origin.y + line.height <= point.y; });
    const double x = point.x - below->origin.x;
    const auto index = below->line ? below->line->stringIndexForPosition(x) : std::nullopt;
    if (!index) {
        return fromShown(below->range.location);
    }
    // The nearer side of the character.
    const std::size_t begin = std::min(*index, below->range.end());
    const TextBreaks breaks(
        std::string_view(shown_).substr(below->range.location, below->range.length));
    const std::size_t from = breaks.atOrBefore(begin - below->range.location);
    const std::size_t before = below->range.location + from;
    const std::size_t after = below->range.location + breaks.nextCharacter(from);
    const double toBefore = std::abs(below->line->offsetForStringIndex(before) - x);
    const double toAfter = std::abs(below->line->offsetForStringIndex(after) - x);
    return fromShown(toAfter < toBefore ? after : before);
}

CFRange NSTextLayout::lineAt(std::size_t position) const {
    const Line& line = lines_[lineIndexAt(toShown(position))];
    const std::size_t begin = fromShown(line.range.location);
    return {begin, fromShown(line.range.end()) - begin};
}

std::vector<CGRect> NSTextLayout::rectsOf(CFRange range) const {
    std::vector<CGRect> rects;
    const std::size_t first = toShown(range.location);
    const std::size_t end = toShown(range.end());
    for (std::size_t i = lineIndexAt(first); i < lines_.size(); ++i) {
        const Line& line = lines_[i];
        const std::size_t from = std::max(first, line.range.location);
        const std::size_t to = std::min(end, line.range.end());
        if (line.range.location > end || (i > 0 && line.range.location == end)) {
            break;
        }
        if (line.line == nullptr || from >= to) {
            continue;
        }
        // In a line of several directions, a part may be in several pieces; one rectangle is shown.
        const bool isWhole = from == line.range.location && to == line.range.end();
        const double start = isWhole ? 0 : line.line->offsetForStringIndex(from);
        const double stop =
            isWhole ? line.line->typographicBounds().width : line.line->offsetForStringIndex(to);
        const double left = std::min(start, stop);
        const double right = std::max(start, stop);
        rects.push_back({{line.origin.x + left, line.origin.y}, {right - left, line.height}});
    }
    return rects;
}

void NSTextLayout::draw(CGContext& canvas, double top, double bottom) const {
    for (const Line& line : lines_) {
        if (line.line == nullptr || line.origin.y + line.height < top || line.origin.y > bottom) {
            continue;
        }
        const CGSavedState state(canvas);
        canvas.translateCTM(line.origin.x, line.origin.y + line.ascent);
        canvas.scaleCTM(1, -1);  // the y axis of text points up
        canvas.drawLine(*line.line);
    }
}

}  // namespace orvane::platform
