#pragma once

#include <cstdio>
#include <string>
#include <vector>

// What both sides of the text and image scenes show.
namespace bench {

// Twenty characters, no two lines alike.
inline std::string line(int i) {
    char text[32];
    std::snprintf(text, sizeof text, "Line %05d of twenty", i % 100000);
    return text;
}

inline constexpr int kImageSide = 64;

// Red, green, blue, alpha; a disc that fades out towards its rim.
inline std::string imagePixels(int i) {
    std::string pixels;
    for (int y = 0; y < kImageSide; ++y) {
        for (int x = 0; x < kImageSide; ++x) {
            const int dx = x - kImageSide / 2;
            const int dy = y - kImageSide / 2;
            const int alpha = 255 - (dx * dx + dy * dy) / 4;
            const int components[] = {(i * 37 + x) & 255, (i * 91 + y) & 255, 128,
                                      alpha < 0 ? 0 : alpha};
            for (const int component : components) {
                pixels += static_cast<char>(component);
            }
        }
    }
    return pixels;
}

}  // namespace bench
