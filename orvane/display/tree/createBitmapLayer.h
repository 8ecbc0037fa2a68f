#pragma once

#include <memory>

namespace orvane::display {

class DisplayLayer;

// A fresh painting layer with its platform view. The model calls it where an object needs a layer
// of its own; the platform-bound family defines it, and the model's tests define a fake.
std::shared_ptr<DisplayLayer> createBitmapLayer();

}  // namespace orvane::display
