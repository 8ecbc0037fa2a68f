#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
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

// The sum of all alpha values, in opaque pixels.
inline double coveredArea(const CGBitmapContext& canvas) {
    double sum = 0;
    for (const std::uint32_t each : picture(canvas)) {
        sum += each >> 24;
    }
    return sum / 255;
}

// Rectangles that cover a canvas without overlaps.
inline std::vector<CGRect> randomPieces(unsigned seed, int canvasWidth, int canvasHeight) {
    std::mt19937 random(seed);
    std::vector<CGRect> pieces;
    for (int y = 0; y < canvasHeight;) {
        const int height = std::min<int>(canvasHeight - y, 1 + static_cast<int>(random() % 90));
        for (int x = 0; x < canvasWidth;) {
            const int width = std::min<int>(canvasWidth - x, 1 + static_cast<int>(random() % 90));
            pieces.push_back({{double(x), double(y)}, {double(width), double(height)}});
            x += width;
        }
        y += height;
    }
    return pieces;
}

}  // namespace orvane::platform
