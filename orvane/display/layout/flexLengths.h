#pragma once

#include <vector>

namespace orvane::display::layout {

// One item on the main axis of a line.
struct FlexItem {
    double base;  // the length before it grows or shrinks
    double min;
    double max;
    double grow;
    double shrink;
};

// Returns the lengths of the items of a line that has `available` points for them, gaps excluded.
// The algorithm is that of the CSS Flexible Box Layout Module, section 9.7 "Resolving Flexible
// Lengths". With infinite space, items do not grow.
std::vector<double> flexLengths(const std::vector<FlexItem>& items, double available);

}  // namespace orvane::display::layout
