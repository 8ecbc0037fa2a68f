#pragma once

#include <vector>

#include "platform/raster/OutlineClipper.h"

namespace orvane::platform {

struct StrokeStyle;

// Cuts lines into the parts that the dash of a stroke paints. A dash that reaches across the point
// where a closed subpath begins and ends stays in one part, with a join.
std::vector<OutlineClipper::Run> dashedRuns(const std::vector<OutlineClipper::Run>& runs,
                                            const StrokeStyle& stroke, const StrokeReach& reach);

}  // namespace orvane::platform
