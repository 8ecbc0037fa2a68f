#include <gtest/gtest.h>

#include <cmath>

#include "orvane/orvane.h"
#include "platform/coregraphics/CGBitmapContext.h"
#include "tests/graphics/painted.h"

namespace orvane::display::graphics {
namespace {

constexpr unsigned kRed = 0xFFFF0000;
constexpr unsigned kGreen = 0xFF00FF00;
constexpr unsigned kBlue = 0xFF0000FF;

using Object = std::shared_ptr<DisplayObject>;
void untouched(DisplayObject&) {}

// An object that is set up and then spoilt.
template <typename T, typename Spoil = void (*)(DisplayObject&)>
std::shared_ptr<T> shape(std::shared_ptr<T> object, unsigned argb, Spoil spoil = untouched) {
    object->setFillColor(argb);
    object->setStrokeColor(0, 0, 0, -1);
    spoil(*object);
    return object;
}

template <typename Spoil = void (*)(DisplayObject&)>
Object rect(float x, float y, float width, float height, Spoil spoil = untouched) {
    const auto object = DisplayFactory::createRect();
    object->set(x, y, width, height);
    return shape(object, kRed, spoil);
}

template <typename Spoil>
Object square(Spoil spoil) {
    return rect(40, 40, 20, 20, spoil);
}

Object circle(float cx, float cy, float r, unsigned argb = kRed) {
    const auto object = DisplayFactory::createCircle();
    object->set(cx, cy, r);
    return shape(object, argb);
}

Object line(float x1, float x2, float width) {
    const auto object = DisplayFactory::createLine();
    object->set(x1, 50, x2, 50);
    object->setStrokeColor(kRed);
    object->setStrokeWidth(width);
    return object;
}

Object arc(float sweep) {
    return shape(DisplayFactory::createPath(), kRed, [sweep](Path& path) {
        path.start();
        path.arc(50, 50, 9, 9, 0, 0, sweep);
        path.finish();
    });
}

Object clip(const geometry::Rect<double>& bounds) {
    const auto container = DisplayFactory::createClipContainer(false);
    container->setBounds(bounds);
    container->add(rect(40, 40, 20, 20));
    return container;
}

// The colour at a place, a component of 1 being the 0 that was set.
unsigned probe(const platform::CGBitmapContext& canvas, std::size_t x, std::size_t y) {
    unsigned pixel = canvas.pixels()[y * canvas.bytesPerRow() / 4 + x];
    for (const unsigned one : {0x010000U, 0x0100U, 0x01U}) {
        pixel -= (pixel & one * 0xFF) == one ? one : 0;
    }
    return pixel;
}

// What applications can do to an object by mistake must stay that object's: on the canvas, and in
// the frame of the group around it. What can go wrong in rasterising is the canvas's own business.
TEST(Pixels, NonsenseLeavesTheNeighboursPainted) {
    LinearGradient nowhere;
    nowhere.set({NAN}, {0}, {INFINITY}, {0});
    nowhere.addColor(kRed, NAN);
    nowhere.addColor(kRed, INFINITY);
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
        {"radius nowhere", square([](Rect& r) { r.setRx(NAN), r.setRy(NAN); }), Anything},
        {"huge radii", square([](Rect& r) { r.setRx(1e30F), r.setRy(INFINITY); }), Painted},
        {"negative radii", square([](Rect& r) { r.setRx(-5), r.setRy(-5); }), Painted},
        {"scaled to nothing", square([](Rect& r) { r.setScale(0, 0); }), Absent},
        {"scaled to a line", square([](Rect& r) { r.setScale(1, 0); }), Absent},
        {"scaled without bound", square([](Rect& r) { r.setScale(3e38F, 3e38F); }), Anything},
        {"moved nowhere", square([](Rect& r) { r.setTranslate(NAN, INFINITY); }), Absent},
        {"gradient nowhere", square([&](Rect& r) { r.setFillColor(nowhere); }), Anything},
        {"no colours", square([](Rect& r) { r.setFillColor(LinearGradient()); }), Anything},
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
        const auto before = DisplayFactory::createRect();
        before->set(0, 0, 20, 20);
        group->add(shape(before, kGreen));
        group->add(c.object);
        group->add(circle(80, 80, 10, kBlue));
        platform::CGBitmapContext canvas(100, 100);
        paintOn(canvas, *group, {0, 0, 100, 100});

        EXPECT_EQ(probe(canvas, 90, 90), kBlue);
        if (c.outcome == Absent) {
            EXPECT_EQ(probe(canvas, 10, 10), kGreen);
        }
        if (c.outcome != Anything) {
            EXPECT_EQ(probe(canvas, 50, 50), c.outcome == Painted ? kRed : 0);
        }
        EXPECT_TRUE(group->getFrame().isWithinReach());
        EXPECT_TRUE(group->getFrame().contains({100, 100}));
    }
}

}  // namespace
}  // namespace orvane::display::graphics
