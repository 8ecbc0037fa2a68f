#include "tests/tree/FakeLayer.h"

#include "orvane/display/tree/createBitmapLayer.h"

namespace orvane::display {

std::shared_ptr<DisplayLayer> createBitmapLayer() {
    return std::make_shared<FakeLayer>("fresh");
}

}  // namespace orvane::display
