#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane::platform {

// The largest width and height of a canvas, and the largest number of pixels in a bitmap (256 MiB).
// Images that claim more are not decoded.
inline constexpr std::int64_t kLargestSide = 32767;
inline constexpr std::int64_t kMostPixels = std::int64_t{1} << 26;

constexpr bool isSensibleImageSize(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           width * height <= kMostPixels;
}

// Whether a compressed file of this size can contain this many pixels, if the best compression that
// its format allows stores `pixelsPerByte` pixels in a byte.
constexpr bool canHold(std::size_t bytes, std::int64_t pixels, std::int64_t pixelsPerByte) {
    return pixels / pixelsPerByte <= static_cast<std::int64_t>(bytes);
}

// Logs that an image is not decoded because of its size.
void reportTooLarge(std::int64_t width, std::int64_t height);

}  // namespace orvane::platform
