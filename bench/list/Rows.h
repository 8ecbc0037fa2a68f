#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "bench/Measure.h"

// What all sides of the list's scene show: rows of a card, two texts and an image, one below the
// other, and what is measured of them.
namespace bench {

inline constexpr int kRows = 100000;
inline constexpr int kRowHeight = 64;
inline constexpr int kNotch = 48;  // how far a notch of a wheel scrolls, in points
inline constexpr int kPictures = 8;
inline constexpr int kPictureSide = 48;

inline std::string title(int row) {
    char text[32];
    std::snprintf(text, sizeof text, "Contact number %06d", row);
    return text;
}

inline std::string subtitle(int row) {
    char text[64];
    std::snprintf(text, sizeof text, "contact.%06d@example.org", row);
    return text;
}

// Red, green, blue, alpha; opaque.
inline std::string picturePixels(int picture) {
    std::string pixels;
    for (int y = 0; y < kPictureSide; ++y) {
        for (int x = 0; x < kPictureSide; ++x) {
            for (const int component :
                 {(picture * 37 + 4 * x) & 255, (picture * 91 + 4 * y) & 255, 128, 255}) {
                pixels += static_cast<char>(component);
            }
        }
    }
    return pixels;
}

inline unsigned cardColor(int row) {
    return row % 2 == 0 ? 0xFFF4F6F8U : 0xFFFFFFFFU;
}

// Off-screen: `show` makes the first picture; `step` scrolls by a notch and paints.
inline void measureList(const std::string& scene, const std::function<void()>& show,
                        const std::function<void()>& step) {
    const double before = heapBytes();
    report(scene, "build_and_first_paint_ms", milliseconds(show));
    report(scene, "heap_mb", (heapBytes() - before) / 1e6);
    for (int i = 0; i < 20; ++i) {
        step();
    }
    constexpr int kSteps = 400;
    const double total = milliseconds([&] {
        for (int i = 0; i < kSteps; ++i) {
            step();
        }
    });
    report(scene, "notch_ms", total / kSteps);
}

}  // namespace bench
