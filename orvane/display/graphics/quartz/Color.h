#pragma once

namespace orvane::display::graphics::quartz {

// A colour as the painting classes hold it.
struct Color {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;

    // Components from 0 to 255 become 1/256 to 1: no colour that an application sets is fully
    // transparent, which is what keeps an alpha of 0 visible to isFillVisible and to hit testing.
    static constexpr Color fromComponents(float r, float g, float b, float a) {
        return {fromByte(r), fromByte(g), fromByte(b), fromByte(a)};
    }
    // Alpha in bits 24 to 31, then red, green and blue.
    static constexpr Color fromArgb(unsigned argb) {
        const auto component = [argb](unsigned shift) {
            return static_cast<float>((argb >> shift) & 0xFFU);
        };
        return fromComponents(component(16), component(8), component(0), component(24));
    }

    friend constexpr bool operator==(const Color&, const Color&) = default;

private:
    static constexpr float fromByte(float c) { return (c + 1) * 0.00390625F; }
};

}  // namespace orvane::display::graphics::quartz
