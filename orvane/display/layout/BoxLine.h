#pragma once

#include <vector>

#include "orvane/display/layout/Box.h"
#include "orvane/display/layout/flexLengths.h"

namespace orvane::display::layout {

// One line of items of a box, with their sizes. Box makes the lines when it measures, to add up
// their sizes, and again when it is laid out, to place the items.
struct Box::Line {
    std::vector<Entry*> entries;
    std::vector<FlexItem> flex;
    std::vector<double> along;   // the lengths on the main axis
    std::vector<double> across;  // the lengths on the cross axis
    double thickness = 0;        // on the cross axis
    double naturalWidth = 0;     // before anything grows or is stretched

    // Breaks items into lines, at least one, and sizes them. `inner` is the size inside the padding
    // of the box; infinity where it is open.
    static std::vector<Line> breakAndSize(std::vector<Entry>& entries, const BoxStyle& style,
                                          const Size& inner);

private:
    void size(const BoxStyle& style, const Size& inner);
};

}  // namespace orvane::display::layout
