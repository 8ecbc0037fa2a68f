#include "orvane/display/layout/BoxLine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "orvane/display/layout/BoxEntry.h"

namespace orvane::display::layout {

namespace {

// Rounds the positions of the ends of lengths that follow one another. What is measured and what is
// placed have the same lengths, so a text wraps as it was measured.
void snapLengths(std::vector<double>& lengths) {
    double end = 0;
    for (double& length : lengths) {
        const double begin = end;
        end += length;
        length = std::round(end) - std::round(begin);
    }
}

}  // namespace

std::vector<Box::Line> Box::Line::breakAndSize(std::vector<Entry>& entries, const BoxStyle& style,
                                               const Size& inner) {
    const bool isRow = style.direction == Direction::Row;
    std::vector<Line> lines(1);
    const double available = isRow ? inner.width : inner.height;
    double length = 0;  // of the last line
    for (Entry& entry : entries) {
        const FlexItem flex = entry.flexItem(style, inner.width);
        const double own = std::max(std::min(flex.base, flex.max), flex.min);
        const double gap = lines.back().entries.empty() ? 0 : style.gap;
        if (style.wraps && !lines.back().entries.empty() && length + gap + own > available) {
            lines.emplace_back();
            length = own;
        } else {
            length += gap + own;
        }
        Line& line = lines.back();
        line.entries.push_back(&entry);
        line.flex.push_back(flex);
        line.naturalWidth = isRow
                                ? length
                                : std::max(line.naturalWidth,
                                           entry.limitedWidth(std::min(
                                               entry.naturalSize(inner.width).width, inner.width)));
    }
    for (Line& line : lines) {
        line.size(style, inner);
    }
    return lines;
}

void Box::Line::size(const BoxStyle& style, const Size& inner) {
    const bool isRow = style.direction == Direction::Row;
    const double gaps = entries.empty() ? 0 : style.gap * static_cast<double>(entries.size() - 1);
    const double available = (isRow ? inner.width : inner.height) - gaps;
    along = flexLengths(flex, available);
    if (std::isfinite(available)) {
        snapLengths(along);
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry& entry = *entries[i];
        across.push_back(
            isRow ? entry.limitedHeight(entry.item.height ? 0 : entry.naturalSize(along[i]).height)
                  : entry.widthInColumn(style, inner.width));
        thickness = std::max(thickness, across.back());
    }
    const double space = isRow ? inner.height : inner.width;
    if (!style.wraps && std::isfinite(space)) {
        thickness = space;
    }
}

}  // namespace orvane::display::layout
