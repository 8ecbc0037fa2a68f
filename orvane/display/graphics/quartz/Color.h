#pragma once

namespace orvane::display::graphics::quartz {

// A colour as the painting classes hold it.
struct Color {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;

    // Components from 0 to 255 become 1/256 to 1, so that an alpha of 0 is still visible; -1, also
    // when it has become the largest unsigned number, becomes 0.
    template <typename T>
    static constexpr Color fromComponents(T r, T g, T b, T a) {
        return {component(r), component(g), component(b), component(a)};
    }
    // Alpha in bits 24 to 31, then red, green and blue.
    static constexpr Color fromArgb(unsigned argb) {
        return fromComponents((argb >> 16) & 0xFFU, (argb >> 8) & 0xFFU, argb & 0xFFU, argb >> 24);
    }

    friend constexpr bool operator==(const Color&, const Color&) = default;

private:
    static constexpr float component(unsigned c) { return static_cast<float>(c + 1) * kStep; }
    static constexpr float component(int c) { return (static_cast<float>(c) + 1) * kStep; }

    static constexpr float kStep = 0.00390625F;
};

}  // namespace orvane::display::graphics::quartz
