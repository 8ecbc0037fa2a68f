#pragma once

#include <cstdint>

// Arithmetic on pixels: 32-bit words of premultiplied alpha, red, green and blue, with alpha in
// bits 24 to 31. Image decoders and canvases share it, so that they round alike.
namespace orvane::platform {

// A color with its channels 16 bits apart, so that one operation processes all four.
namespace wide {

inline constexpr std::uint64_t kChannels = 0x00ff00ff00ff00ffu;

inline std::uint64_t spread(std::uint32_t color) {
    return (color | std::uint64_t{color} << 24) & kChannels;
}

inline std::uint32_t packed(std::uint64_t color) {
    return static_cast<std::uint32_t>(color | color >> 24);
}

inline std::uint64_t scaled(std::uint64_t color, std::uint64_t factor) {
    // x / 255 equals (x + x / 256) / 256 after one half was added.
    const std::uint64_t x = color * factor + 0x0080008000800080u;
    return ((x + ((x >> 8) & kChannels)) >> 8) & kChannels;
}

inline std::uint64_t over(std::uint64_t source, std::uint64_t below) {
    return source + scaled(below, 255 - (source >> 48));
}

}  // namespace wide

// Multiplies every channel of a premultiplied color by `factor` / 255, rounded to nearest.
inline std::uint32_t scaled(std::uint32_t color, std::uint32_t factor) {
    return wide::packed(wide::scaled(wide::spread(color), factor));
}

// Composites the premultiplied color `source` over `below`.
inline std::uint32_t over(std::uint32_t source, std::uint32_t below) {
    return wide::packed(wide::over(wide::spread(source), wide::spread(below)));
}

// Converts a color from straight bytes.
inline std::uint32_t premultiplied(std::uint32_t r, std::uint32_t g, std::uint32_t b,
                                   std::uint32_t a) {
    return (a << 24) | scaled(r << 16 | g << 8 | b, a);
}

}  // namespace orvane::platform
