#pragma once

#include <span>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSMapCamera;

// Changes the x coordinates of places (webMercator.h) so that each is at most half a world from the
// one before: a line through them then goes the shorter way around the world.
ORVANE_EXPORT void unwrap(std::span<CGPoint> places);

// Returns the parts of a line that are in a view of this size or at most `margin` points outside,
// in view coordinates, for each copy of the world that is visible. Points that are too close
// together to be seen are left out. The places come from unwrap.
ORVANE_EXPORT std::vector<std::vector<CGPoint>> visibleLine(std::span<const CGPoint> places,
                                                            const NSMapCamera& camera, CGSize size,
                                                            double margin);

}  // namespace orvane::platform
