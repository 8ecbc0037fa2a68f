#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Point.h"

namespace orvane::display {

class DisplayObject;

namespace events {

// Returns the topmost visible object at a location, in screen coordinates, that `accepts` accepts;
// null for none. The last of `objects` and the last child of a container are on top; a container is
// behind its children. An object is at the location if its frame and those of all its ancestors
// contain it. Inside a scroll container the location is that in its content, as it was scrolled.
// The cost depends on what is at the location, not on the number of objects.
ORVANE_EXPORT std::shared_ptr<DisplayObject> hitTest(
    const std::vector<std::shared_ptr<DisplayObject>>& objects,
    const geometry::Point<double>& location, const std::function<bool(DisplayObject&)>& accepts);

}  // namespace events
}  // namespace orvane::display
