#pragma once

#include <vector>

#include "platform/appkit/NSViewClip.h"

namespace orvane::display {
class DisplayLayer;
}

namespace orvane::display::native {

// The clips for the view of a sublayer, in the coordinates of its superlayer; see
// LayerPlacement::clipContainersOf. Those that are parallel to the axes are one, the first.
std::vector<platform::NSViewClip> clipsOfLayer(const DisplayLayer& layer);

}  // namespace orvane::display::native
