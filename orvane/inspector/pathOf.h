#pragma once

#include <string>

namespace orvane::display {
class DisplayObject;
}

namespace orvane::inspector {

// Returns where an object of the application is: the kinds of its ancestors and of itself, as a
// driver::Query has it.
std::string pathOf(const display::DisplayObject& object);

}  // namespace orvane::inspector
