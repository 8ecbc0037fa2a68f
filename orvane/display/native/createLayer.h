#pragma once

#include <concepts>
#include <memory>

#include "orvane/display/native/NativeLayer.h"

namespace orvane::display {

// Makes a native layer of kind T with its platform view.
template <std::derived_from<native::NativeLayer> T>
std::shared_ptr<T> createLayer() {
    const std::shared_ptr<T> layer = std::make_shared<T>();
    layer->init();
    return layer;
}

}  // namespace orvane::display
