#include <gtest/gtest.h>

#include <cmath>

#include "orvane/orvane.h"
#include "tests/coregraphics/pixels.h"
#include "tests/graphics/painted.h"

namespace orvane::display::graphics {
namespace {

using platform::difference;
using platform::pixel;

constexpr unsigned kRed = 0xFFFF0000;
constexpr unsigned kGreen = 0xFF00FF00;
constexpr unsigned kBlue = 0xFF0000FF;

using Object = std::shared_ptr<DisplayObject>;

template <typename T>
std::shared_ptr<T> filled(std::shared_ptr<T> shape, unsigned argb = kRed) {
    shape->setFillColor(argb);
    shape->setStrokeColor(0, 0, 0, -1);
    return shape;
}

std::shared_ptr<Rect> rect(float x, float y, float width, float height) {
    auto object = filled(DisplayFactory::createRect());
    object->set(x, y, width, height);
    return object;
}

Object transformed(float scaleX, float scaleY, float move) {
    const auto object = rect(40, 40, 20, 20);
    object->setMatrix(scaleX, 0, move, 0, scaleY, move);
    return object;
}

Object gradient(std::initializer_list<float> offsets) {
    LinearGradient nowhere;
    nowhere.set({NAN}, {0}, {INFINITY}, {0});
    for (const float offset : offsets) {
        nowhere.addColor(kRed, offset);
    }
    const auto object = rect(40, 40, 20, 20);
    object->setFillColor(nowhere);
    return object;
}

Object circle(float cx, float cy, float r, unsigned argb = kRed) {
    const auto object = filled(DisplayFactory::createCircle(), argb);
    object->set(cx, cy, r);
    return object;
}

Object line(float x1, float x2, float width) {
    const auto object = DisplayFactory::createLine();
    object->set(x1, 50, x2, 50);
    object->setStrokeColor(kRed);
    object->setStrokeWidth(width);
    return object;
}

Object arc(float sweep) {
    const auto path = filled(DisplayFactory::createPath());
    path->start();
    path->arc(50, 50, 9, 9, 0, 0, sweep);
    path->finish();
    return path;
}

Object clip(const geometry::Rect<double>& bounds) {
    const auto container = DisplayFactory::createClipContainer(false);
    container->setBounds(bounds);
    container->add(rect(40, 40, 20, 20));
    return container;
}

// What applications can do to an object by mistake must stay that object's: on the canvas, and in
// the frame of the group around it. What can go wrong in rasterising is the canvas's own business.
TEST(Pixels, NonsenseLeavesTheNeighboursPainted) {
    enum Outcome { Absent, Painted, Anything };
    const struct {
        const char* what;
        Object object;
        Outcome outcome;
    } cases[] = {
        {"rectangle nowhere", rect(NAN, 40, 20, 20), Absent},
        {"rectangle without end", rect(40, 40, INFINITY, 20), Absent},
        {"rectangle far away", rect(3e38F, 3e38F, 20, 20), Absent},
        {"huge rectangle", rect(-1e38F, -1e38F, 3e38F, 3e38F), Painted},
        {"rectangle the other way", rect(60, 60, -20, -20), Painted},
        {"scaled to nothing", transformed(0, 0, 0), Absent},
        {"scaled to a line", transformed(1, 0, 0), Absent},
        {"scaled without bound", transformed(3e38F, 3e38F, 0), Anything},
        {"moved nowhere", transformed(1, 1, NAN), Absent},
        {"gradient nowhere", gradient({NAN, INFINITY}), Anything},
        {"gradient without colours", gradient({}), Anything},
        {"circle nowhere", circle(NAN, NAN, 10), Absent},
        {"circle without end", circle(40, 40, INFINITY), Absent},
        {"huge circle", circle(-1e30F, -1e30F, 1e38F), Anything},
        {"circle the other way", circle(60, 60, -10), Painted},
        {"line nowhere", line(30, NAN, 4), Absent},
        {"huge line", line(-1e38F, 1e38F, 4), Painted},
        {"stroke nowhere", line(30, 70, NAN), Absent},
        {"stroke without end", line(30, 70, INFINITY), Anything},
        {"negative stroke", line(30, 70, -4), Absent},
        {"sweep without end", arc(INFINITY), Absent},
        {"huge sweep", arc(1e30F), Anything},
        {"clip nowhere", clip({NAN, 0, 100, 100}), Anything},
        {"clip without size", clip({50, 50, 0, 0}), Absent},
        {"clip the other way", clip({100, 100, -100, -100}), Painted},
        {"clip without end", clip({0, 0, INFINITY, INFINITY}), Anything},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto group = DisplayFactory::createContainer();
        const auto before = rect(0, 0, 20, 20);
        before->setFillColor(kGreen);
        group->add(before);
        group->add(c.object);
        group->add(circle(80, 80, 10, kBlue));
        platform::CGBitmapContext canvas(100, 100);
        paintOn(canvas, *group, {0, 0, 100, 100});

        // A component of 0 is painted as 1.
        EXPECT_LE(difference(pixel(canvas, 90, 90), kBlue), 1);
        if (c.outcome == Absent) {
            EXPECT_LE(difference(pixel(canvas, 10, 10), kGreen), 1);
        }
        if (c.outcome != Anything) {
            EXPECT_LE(difference(pixel(canvas, 50, 50), c.outcome == Painted ? kRed : 0), 1);
        }
        EXPECT_TRUE(group->getFrame().isWithinReach());
        EXPECT_TRUE(group->getFrame().contains({100, 100}));
    }
}

}  // namespace
}  // namespace orvane::display::graphics
