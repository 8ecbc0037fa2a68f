#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display {

// The canvas that objects paint on during a paint pass on the calling thread; null outside a pass.
// The view that runs a pass sets it and clears it. Painting code queries it for each use and keeps
// no copy.
ORVANE_EXPORT platform::CGContext* GetCurrentCanvas();
// Sets the canvas of the calling thread, borrowed until it is set to null.
ORVANE_EXPORT void SetCurrentCanvas(platform::CGContext* canvas);

}  // namespace orvane::display
