#pragma once

#include <iosfwd>

namespace orvane::display {
class Display;
}

namespace orvane::host {

// Prints the object tree of a display, then its layer tree, in pre-order; each line is indented by
// its depth. Layers are numbered from 1 in the order of their tree. The line of an object contains
// its kind, id, frame (in screen coordinates), visibility and the number of its layer, then its
// text and its accessibility label, in quotes, if it has them. The line of
// a layer contains its kind, number, frame (in screen coordinates) and visibility, then the frame
// of its view (in the superview's coordinates) and the view's z position.
void dumpTree(std::ostream& out, const display::Display& display);

}  // namespace orvane::host
