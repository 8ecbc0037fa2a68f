#pragma once

#include <span>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/ConvexUnion.h"
#include "platform/raster/OutlineClipper.h"
#include "platform/raster/StrokeReach.h"

namespace orvane::platform {

// Adds what the stroke of connected lines covers to a union: a strip for each line and a wedge for
// each join. Ends are butt caps; joins are mitered up to the miter limit, which
// applies to angles in user space.
void addStroke(const OutlineClipper::Run& run, const StrokeReach& reach, ConvexUnion& result);

// Whether Cairo, which applies the limit to angles in pixels, would draw a miter that is beyond the
// limit in user space and may be longer than the ink of the outline.
bool hasForbiddenMiter(const OutlineClipper::Run& run, const StrokeReach& reach);

}  // namespace orvane::platform
