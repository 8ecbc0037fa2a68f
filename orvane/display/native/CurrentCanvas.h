#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display {

// The canvas that drawing goes to on the calling thread, for the length of one paint pass; null
// outside. Whoever runs a pass sets it and clears it; who paints asks for it afresh each time.
ORVANE_EXPORT platform::CGContext* GetCurrentCanvas();
ORVANE_EXPORT void SetCurrentCanvas(platform::CGContext* canvas);

}  // namespace orvane::display
