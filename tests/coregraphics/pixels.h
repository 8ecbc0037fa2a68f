#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

inline std::uint32_t pixel(const CGBitmapContext& canvas, int x, int y) {
    return canvas.pixels()[static_cast<std::size_t>(y) * (canvas.bytesPerRow() / 4) +
                           static_cast<std::size_t>(x)];
}

// The largest difference of one channel between two canvases of one size.
inline int largestDifference(const CGBitmapContext& a, const CGBitmapContext& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            for (int shift = 0; shift < 32; shift += 8) {
                const int p = static_cast<int>(pixel(a, x, y) >> shift & 255);
                const int q = static_cast<int>(pixel(b, x, y) >> shift & 255);
                largest = std::max(largest, std::abs(p - q));
            }
        }
    }
    return largest;
}

// How many pixels' worth of paint there is, by the alpha channel.
inline double coveredArea(const CGBitmapContext& canvas) {
    double sum = 0;
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            sum += pixel(canvas, x, y) >> 24;
        }
    }
    return sum / 255;
}

inline void fillRect(CGContext& canvas, const CGRect& rect) {
    canvas.addRect(rect);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

}  // namespace orvane::platform
