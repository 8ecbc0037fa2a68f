#pragma once

#include <span>

namespace orvane::platform {

// How an outline is stroked, in user units. Ends are butt caps; joins are mitered up to a miter
// limit of 10, the defaults of the interface.
struct StrokeStyle {
    double width = 1;
    double dashPhase = 0;
    // Alternating lengths of dashes and gaps; empty for a solid line.
    std::span<const double> dash;
    // The share of the line that is painted, if its dashes are too short to be drawn one by one.
    double opacity = 1;
};

// How an outline becomes coverage.
enum class Coverage { Fill, EOFill, Stroke };

}  // namespace orvane::platform
