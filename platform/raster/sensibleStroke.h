#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// Returns the nearest stroke that can be drawn: its width is limited, an invalid dash is left out,
// and a dash that is too short to be seen becomes an opacity. `pen` maps user space to pixels and
// is drawable. The result refers to the same dash.
StrokeStyle sensibleStroke(const StrokeStyle& stroke, const CGAffineTransform& pen);

}  // namespace orvane::platform
