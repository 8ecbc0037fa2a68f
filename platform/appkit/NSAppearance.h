#pragma once

#include <cstdint>
#include <string>

namespace orvane::platform {

// What the user has set on the desktop for the look of programs, with the values for what the
// desktop does not say.
struct NSAppearance {
    bool isDark = false;
    std::uint32_t accentColor = 0xFF3584E4;  // ARGB, opaque
    std::string font = "sans-serif";         // a family
    double textSize = 15;                    // of that font, in points of views, without textScale
    double textScale = 1;
    bool reducesMotion = false;

    friend bool operator==(const NSAppearance&, const NSAppearance&) = default;
};

}  // namespace orvane::platform
