#pragma once

namespace orvane::display::graphics {

// One coordinate of a gradient's or a pattern's axis. Painting reads `value` alone; `flag` is
// carried for the applications that pass it.
struct GradientUnit {
    float value = 0;
    bool flag = true;

    friend constexpr bool operator==(const GradientUnit&, const GradientUnit&) = default;
};

}  // namespace orvane::display::graphics
