#pragma once

#include <memory>
#include <string>

namespace orvane::display {

class DisplayObject;

// Paints the object on white and compares the picture with tests/golden/<name>.png, pixel by pixel.
// A mismatch fails the test and leaves the picture and the difference beside each other in the
// build folder. With ORVANE_UPDATE_GOLDEN=1 in the environment the picture becomes the golden one.
//
// The pictures hold for the versions of the libraries that Debian 12 has.
void compareWithGolden(const std::string& name, int width, int height,
                       const std::shared_ptr<DisplayObject>& object);

}  // namespace orvane::display
