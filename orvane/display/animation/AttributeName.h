#pragma once

#include <cstdint>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::display::animation {

// The attribute of a layer that is animated, and the numbers of one key frame. Lengths are in
// points, angles in radians.
enum class AttributeName : std::int32_t {
    TranslationX = 0,  // one number
    TranslationY = 1,  // one number
    Opacity = 2,       // one number, 0 to 1
    Translation = 3,   // x, y
    Rotation = 4,      // one number
    Affine = 5,        // a, b, c, d, tx, ty
};

// Returns the platform's name of an attribute; an empty string for a value that is not an
// attribute.
ORVANE_EXPORT std::string getKeyPath(AttributeName attributeName);

}  // namespace orvane::display::animation
