#include "platform/coretext/CTFrame.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/coregraphics/CairoCanvas.h"
#include "platform/coretext/CTLine.h"

namespace orvane::platform {

CTFrame::CTFrame(std::vector<PlacedLine> lines) : lines_(std::move(lines)) {
    double left = INFINITY, bottom = INFINITY, right = -INFINITY, top = -INFINITY;
    for (const PlacedLine& placed : lines_) {
        const CGRect ink = placed.line->inkBounds();
        left = std::min(left, placed.origin.x + ink.origin.x);
        right = std::max(right, placed.origin.x + ink.origin.x + ink.size.width);
        bottom = std::min(bottom, placed.origin.y + ink.origin.y);
        top = std::max(top, placed.origin.y + ink.origin.y + ink.size.height);
        tallestInk_ = std::max({tallestInk_, -ink.origin.y, ink.origin.y + ink.size.height});
    }
    if (!lines_.empty()) {
        inkBounds_ = {{left, bottom}, {right - left, top - bottom}};
    }
}

CGRect CTFrame::imageBounds() const {
    CGRect all;
    for (const PlacedLine& placed : lines_) {
        CGRect box = placed.line->imageBounds();
        box.origin = {box.origin.x + placed.origin.x, box.origin.y + placed.origin.y};
        if (!isEmpty(box)) {
            all = isEmpty(all) ? box : united(all, box);
        }
    }
    return all;
}

void CTFrame::paint(CairoCanvas& canvas) const {
    cairo_t* const cairo = canvas.cairo;
    double left = 0, bottom = 0, right = 0, top = 0;
    cairo_clip_extents(cairo, &left, &bottom, &right, &top);
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    auto placed = std::partition_point(lines_.begin(), lines_.end(), [&](const PlacedLine& each) {
        return each.origin.y - tallestInk_ > top;
    });
    for (; placed != lines_.end() && placed->origin.y + tallestInk_ >= bottom; ++placed) {
        cairo_translate(cairo, placed->origin.x, placed->origin.y);
        placed->line->paint(canvas);
        cairo_set_matrix(cairo, &matrix);
    }
}

std::optional<std::size_t> CTFrame::stringIndexForPosition(const CGPoint& point) const {
    if (lines_.empty()) {
        return std::nullopt;
    }
    const auto placed =
        std::partition_point(lines_.begin(), lines_.end() - 1,
                             [&](const PlacedLine& each) { return each.bottom >= point.y; });
    const auto index = placed->line->stringIndexForPosition(point.x - placed->origin.x);
    return index.value_or(placed->line->stringRange().location);
}

std::string CTFrame::description() const {
    std::string result;
    for (const PlacedLine& placed : lines_) {
        char origin[64];
        std::snprintf(origin, sizeof origin, "%g %g ", placed.origin.x, placed.origin.y);
        result += origin + placed.line->description() + '\n';
    }
    return result;
}

}  // namespace orvane::platform
