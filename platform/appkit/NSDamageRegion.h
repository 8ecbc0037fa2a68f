#pragma once

#include <cstdint>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

// A set of damaged rectangles in device pixels. What overlaps or nearly touches is merged as it
// comes, as long as the box around the two holds little that neither covers: two far corners never
// become one big box.
//
// Up to a limit the rectangles stand in a list. Beyond it the region turns to a coarse grid over
// its bounds, in which each cell keeps the box of its own damage; ten thousand rectangles so cost
// ten thousand small steps. It keeps its memory when emptied.
class ORVANE_EXPORT NSDamageRegion {
public:
    // What is added is cut to these. Damage outside new bounds is dropped.
    void setBounds(const NSBackingRect& bounds);
    const NSBackingRect& bounds() const { return bounds_; }

    void add(const NSBackingRect& rect);
    void addAll() { add(bounds_); }
    bool isEmpty() const { return rects_.empty() && !gridded_; }
    void clear();
    // Moves the rectangles to `out` (emptied first) and empties the region.
    void take(std::vector<NSBackingRect>& out);

private:
    void addToList(NSBackingRect rect);
    void addToGrid(const NSBackingRect& rect);
    void turnToGrid();
    void mergeGrid(std::vector<NSBackingRect>& out) const;

    NSBackingRect bounds_;
    std::vector<NSBackingRect> rects_;
    bool gridded_ = false;
    std::int64_t cellSize_ = 0;  // in pixels
    std::int64_t columns_ = 0;
    std::vector<NSBackingRect> cells_;
    NSBackingRect covered_;  // the largest rectangle that lies in the grid as a whole
};

}  // namespace orvane::platform
