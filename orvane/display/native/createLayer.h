#pragma once

#include <concepts>
#include <memory>

#include "orvane/display/native/NativeLayer.h"

namespace orvane::display {

// Creates a native layer of type T together with its platform view. Blocks until the main thread
// has created the view.
template <std::derived_from<native::NativeLayer> T>
std::shared_ptr<T> createLayer() {
    const std::shared_ptr<T> layer = std::make_shared<T>();
    layer->init();
    return layer;
}

}  // namespace orvane::display
