#pragma once

#include <memory>
#include <vector>

namespace orvane::display {
class Display;
class DisplayObject;
}  // namespace orvane::display

namespace orvane::driver {

struct Query;

// Returns all visible objects of a display with these properties, in drawing order. Main thread.
std::vector<std::shared_ptr<display::DisplayObject>> findObjects(const display::Display& display,
                                                                 const Query& query);

// Returns the only such object. Throws Failure, with a list of all objects, if there is none or
// more than one. Main thread.
std::shared_ptr<display::DisplayObject> findObject(const display::Display& display,
                                                   const Query& query);

}  // namespace orvane::driver
