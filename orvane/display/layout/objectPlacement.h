#pragma once

#include "orvane/display/geometry/Rect.h"

namespace orvane::display {

class DisplayObject;

namespace layout {

// Whether an object is a text that wraps at the width that it is given.
bool isWrapped(DisplayObject& object);

// Returns the box of an object in its own coordinates: its outline, its bounds, or the union of its
// children.
geometry::Rect<double> boxOf(DisplayObject& object);

// Gives an object the size of `rect` if it takes sizes, and moves it there: replaces its
// transformation. `rect` is in the coordinates of its parent.
void placeObject(DisplayObject& object, const geometry::Rect<double>& rect);

}  // namespace layout
}  // namespace orvane::display
