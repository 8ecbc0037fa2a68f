#pragma once

#include "platform/coregraphics/CGColor.h"

namespace orvane::display::graphics::quartz {

// A color as the canvas takes it: components from 0 to 1.
struct Color {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;

    // Converts components from 0 to 255: c becomes (c + 1) / 256, so that an alpha of 0 is still
    // visible. A component of -1, also as the largest unsigned number, becomes 0.
    template <typename T>
    static constexpr Color fromComponents(T r, T g, T b, T a) {
        return {component(r), component(g), component(b), component(a)};
    }
    // Converts a 32-bit color: alpha in bits 24 to 31, then red, green and blue.
    static constexpr Color fromArgb(unsigned argb) {
        return fromComponents((argb >> 16) & 0xFFU, (argb >> 8) & 0xFFU, argb & 0xFFU, argb >> 24);
    }

    // Converts to the color that a text attribute takes.
    constexpr platform::CGColor cgColor() const { return {r, g, b, a}; }

    friend constexpr bool operator==(const Color&, const Color&) = default;

private:
    static constexpr float component(unsigned c) { return static_cast<float>(c + 1) * kStep; }
    static constexpr float component(int c) { return (static_cast<float>(c) + 1) * kStep; }

    static constexpr float kStep = 0.00390625F;
};

}  // namespace orvane::display::graphics::quartz
