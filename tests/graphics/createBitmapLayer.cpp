#include "orvane/display/createBitmapLayer.h"

#include "tests/graphics/MarkingLayer.h"

// The model's tests link no platform: their layers have no view.
std::shared_ptr<orvane::display::DisplayLayer> orvane::display::createBitmapLayer() {
    return std::make_shared<MarkingLayer>();
}
