#pragma once

#include "orvane/display/tree/ContainerObject.h"

namespace orvane::embedding {

// Returns the children of an object; an empty list if the object is not a container.
inline const display::ContainerObject::Children& childrenOf(const display::DisplayObject& object) {
    static const display::ContainerObject::Children none;
    const display::ContainerObject* const container = object.asContainer();
    return container != nullptr ? container->getChildren() : none;
}

}  // namespace orvane::embedding
