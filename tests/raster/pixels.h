#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/raster/CGBitmapContext.h"

namespace orvane::platform {

inline std::uint32_t pixel(const CGBitmapContext& canvas, int x, int y) {
    return canvas.pixels()[static_cast<std::size_t>(y) * (canvas.bytesPerRow() / 4) +
                           static_cast<std::size_t>(x)];
}

// All pixels in rows from the top.
inline std::vector<std::uint32_t> picture(const CGBitmapContext& canvas) {
    std::vector<std::uint32_t> result;
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            result.push_back(pixel(canvas, x, y));
        }
    }
    return result;
}

// The largest difference of a channel.
inline int difference(std::uint32_t a, std::uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest, std::abs(static_cast<int>(a >> shift & 255) -
                                             static_cast<int>(b >> shift & 255)));
    }
    return largest;
}

// The largest difference of a channel between two canvases of the same size.
inline int largestDifference(const CGBitmapContext& a, const CGBitmapContext& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            largest = std::max(largest, difference(pixel(a, x, y), pixel(b, x, y)));
        }
    }
    return largest;
}

// The sum of all alpha values, in opaque pixels.
inline double coveredArea(const CGBitmapContext& canvas) {
    double sum = 0;
    for (const std::uint32_t each : picture(canvas)) {
        sum += each >> 24;
    }
    return sum / 255;
}

}  // namespace orvane::platform
