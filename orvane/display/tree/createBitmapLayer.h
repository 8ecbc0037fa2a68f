#pragma once

#include <memory>

namespace orvane::display {

class DisplayLayer;

// Creates a painting layer with its platform view. The model calls it where an object needs a layer
// of its own. The native module defines it; the tests of the model define a fake.
std::shared_ptr<DisplayLayer> createBitmapLayer();

}  // namespace orvane::display
