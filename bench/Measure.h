#pragma once

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

// What the benchmarks of both sides share: the colors and places of the scene, the clock, the heap.
namespace bench {

inline constexpr int kWidth = 1920;
inline constexpr int kHeight = 1080;
inline constexpr double kSide = 20;
inline constexpr int kFrames = 120;

// The color of the i-th shape.
inline unsigned shapeColor(int i) {
    return 0xFF000000U | static_cast<unsigned>(i) * 2654435761U >> 8U;
}

struct Place {
    double x, y;
};

inline Place place(int i) {
    return {std::fmod(i * 37.31, 1900), std::fmod(i * 91.77, 1060)};
}

// The place of a moving object in a frame: within a few units of its home, at any fraction of a
// unit.
inline Place movedPlace(int i, int frame) {
    const Place home = place(i);
    return {home.x + 4 * std::sin(frame * 0.7 + i), home.y + 4 * std::cos(frame * 0.9 + i)};
}

// The first `count` objects, spread over the scene, whose motion stays well inside it.
inline std::vector<int> movers(int objects, int count) {
    std::vector<int> result;
    const int stride = std::max(1, objects / (count * 2));
    for (int i = stride / 2; i < objects && static_cast<int>(result.size()) < count; i += stride) {
        const Place home = place(i);
        if (home.x > 40 && home.x < 1840 && home.y > 40 && home.y < 1000) {
            result.push_back(i);
        }
    }
    return result;
}

inline double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

// Returns the median time of several runs, in milliseconds.
inline double median(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        times.push_back(milliseconds(work));
    }
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[static_cast<std::size_t>(runs) / 2];
}

inline double heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

inline void report(const std::string& scene, const char* figure, double value) {
    std::printf("%s %s %.4f\n", scene.c_str(), figure, value);
    std::fflush(stdout);
}

}  // namespace bench
