#pragma once

#include <iosfwd>

namespace orvane::display {
class Display;
}

namespace orvane::host {

// Prints what stands on a display: the object tree, then the layer tree, each line below and
// right of its parent's. Layers are numbered from 1 in the order of their tree. An object's line
// has its kind, id, frame, visibility and the number of the layer it is on; a layer's has its kind,
// number, frame and visibility, then the frame and the z position of its view.
void dumpTree(std::ostream& out, const display::Display& display);

}  // namespace orvane::host
