#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "orvane/display/Display.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::embedding {

// Returns the layers of the top-level objects of a display, in drawing order: the roots of its
// layer tree.
inline std::vector<std::shared_ptr<display::DisplayLayer>> rootLayers(
    const display::Display& display) {
    std::vector<std::shared_ptr<display::DisplayLayer>> roots;
    for (const auto& object : display.getObjects()) {
        if (auto layer = object->getLayer()) {
            roots.push_back(std::move(layer));
        }
    }
    return roots;
}

}  // namespace orvane::embedding
