#pragma once

namespace orvane::display::graphics {

// One coordinate of the axis of a gradient or a pattern. Painting uses only `value`. Nothing reads
// `flag`; it exists because applications pass it.
struct GradientUnit {
    float value = 0;
    bool flag = true;

    friend constexpr bool operator==(const GradientUnit&, const GradientUnit&) = default;
};

}  // namespace orvane::display::graphics
