#pragma once

#include <cstdint>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

// A set of damaged rectangles in device pixels. Rectangles that overlap or nearly touch are merged
// when they are added, if their bounding box adds few undamaged pixels. Two distant corners never
// become one large box.
//
// A small number of rectangles is kept in a list. Beyond a limit, the region switches to a coarse
// grid over its bounds, in which each cell keeps the bounding box of its own damage, so the cost of
// adding a rectangle stays small. Clearing the region keeps its memory.
class ORVANE_EXPORT NSDamageRegion {
public:
    // Added rectangles are clipped to the bounds. Damage outside new bounds is dropped.
    void setBounds(const NSBackingRect& bounds);
    const NSBackingRect& bounds() const { return bounds_; }

    void add(const NSBackingRect& rect);
    void addAll() { add(bounds_); }
    bool isEmpty() const { return rects_.empty() && !gridded_; }
    void clear();
    // Moves the rectangles to `out`, which is emptied first, and clears the region.
    void take(std::vector<NSBackingRect>& out);

private:
    void addToList(NSBackingRect rect);
    void addToGrid(const NSBackingRect& rect);
    void switchToGrid();
    void mergeGrid(std::vector<NSBackingRect>& out) const;

    NSBackingRect bounds_;
    std::vector<NSBackingRect> rects_;
    bool gridded_ = false;
    std::int64_t cellSize_ = 0;  // in pixels
    std::int64_t columns_ = 0;
    std::vector<NSBackingRect> cells_;
    NSBackingRect covered_;  // the largest rectangle that was added to the grid
};

}  // namespace orvane::platform
