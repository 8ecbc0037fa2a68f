#pragma once

#include <cstdint>

namespace orvane::platform {

// No canvas is larger than this either way, and no bitmap holds more pixels: a quarter of a
// gibibyte. Whatever announces more is not decoded.
inline constexpr std::int64_t kLargestSide = 32767;
inline constexpr std::int64_t kMostPixels = std::int64_t{1} << 26;

constexpr bool isSensibleImageSize(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           width * height <= kMostPixels;
}

}  // namespace orvane::platform
