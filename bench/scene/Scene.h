#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "bench/Measure.h"

// The scenes that both sides show, and what is measured of them: N different objects in one
// container, at bench::place(i).
namespace bench {

enum class Kind { Shapes, Text, Images };

// One side of the comparison. It owns what it creates.
class Stage {
public:
    virtual ~Stage() = default;

    // Shapes are squares and circles of kSide units in turn, filled with shapeColor(i) and stroked
    // in black; texts are line(i) at 13 units; images imagePixels(i), kImageSide pixels wide.
    virtual void add(Kind kind, int i) = 0;
    // Moves the object that was added as the i-th.
    virtual void move(int i, const Place& place) = 0;
    // Makes several moves as one change.
    virtual void update(const std::function<void()>& moves) { moves(); }
    // Invalidates everything that is shown.
    virtual void invalidate() = 0;
    // Paints what is invalid, and returns when it is in the window's pixels.
    virtual void paint() = 0;
    // The size of pictures of the window's size, which the first object causes and not each.
    virtual double pictureBytes() const { return 0; }
};

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

// Shows COUNT objects of NAME ("shapes", "text" or "images") on an empty stage that was painted
// once, and reports the figures.
inline void measure(Stage& stage, const std::string& name, int count) {
    const Kind kind = name == "text" ? Kind::Text : name == "images" ? Kind::Images : Kind::Shapes;
    const std::string scene = name + "=" + std::to_string(count);
    const double before = heapBytes();
    report(scene, "build_and_first_paint_ms", milliseconds([&] {
               for (int i = 0; i < count; ++i) {
                   stage.add(kind, i);
                   stage.move(i, place(i));
               }
               stage.paint();
           }));
    report(scene, "full_repaint_ms", median(count > 50000 ? 3 : 500, [&] {
               stage.invalidate();
               stage.paint();
           }));
    report(scene, "bytes_an_object", (heapBytes() - before - stage.pictureBytes()) / count);
    for (const int moving : {1, 100}) {
        const std::vector<int> moved = movers(count, moving);
        int frame = 0;
        const auto step = [&] {
            ++frame;
            stage.update([&] {
                for (const int i : moved) {
                    stage.move(i, movedPlace(i, frame));
                }
            });
            stage.paint();
        };
        step();
        report(scene, moving == 1 ? "frame_1_moves_ms" : "frame_100_move_ms",
               median(kFrames, step));
    }
}

}  // namespace bench
