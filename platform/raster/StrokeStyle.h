#pragma once

#include <span>

namespace orvane::platform {

// How a line is drawn along an outline, in user units. Ends are cut square at the end point, joins
// are mitred up to ten times the half width, as the interface's defaults have it.
struct StrokeStyle {
    double width = 1;
    double dashPhase = 0;
    // Alternating lengths of line and gap; a solid line if empty.
    std::span<const double> dash;
};

// How an outline becomes coverage.
enum class Coverage { Fill, EOFill, Stroke };

}  // namespace orvane::platform
