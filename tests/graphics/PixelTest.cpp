#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "orvane/display/CurrentCanvas.h"
#include "orvane/orvane.h"
#include "platform/coregraphics/CGBitmapContext.h"

namespace orvane::display::graphics {
namespace {

constexpr unsigned kRed = 0xFFFF0000;
constexpr unsigned kGreen = 0xFF00FF00;
constexpr unsigned kBlue = 0xFF0000FF;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float inf = std::numeric_limits<float>::infinity();

using Object = std::shared_ptr<DisplayObject>;

template <typename T>
std::shared_ptr<T> filled(std::shared_ptr<T> shape, unsigned argb) {
    shape->setFillColor(argb);
    shape->setStrokeColor(0, 0, 0, -1);
    return shape;
}

Object rect(const std::function<void(Rect&)>& spoil) {
    const auto object = filled(DisplayFactory::createRect(), kRed);
    object->set(40, 40, 20, 20);
    spoil(*object);
    return object;
}

Object fresh(float x, float y, float width, float height) {
    const auto object = filled(DisplayFactory::createRect(), kRed);
    object->set(x, y, width, height);
    return object;
}

Object circle(float cx, float cy, float r) {
    const auto object = filled(DisplayFactory::createCircle(), kRed);
    object->set(cx, cy, r);
    return object;
}

Object line(const std::function<void(Line&)>& spoil) {
    const auto object = DisplayFactory::createLine();
    object->set(30, 50, 70, 50);
    object->setStrokeColor(kRed);
    object->setStrokeWidth(4);
    spoil(*object);
    return object;
}

Object path(const std::function<void(Path&)>& draw) {
    const auto object = filled(DisplayFactory::createPath(), kRed);
    object->start();
    draw(*object);
    object->finish();
    return object;
}

Object clip(const geometry::Rect<double>& bounds) {
    const auto container = DisplayFactory::createClipContainer(false);
    container->setBounds(bounds);
    container->add(fresh(40, 40, 20, 20));
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

// What applications can do to an object by mistake must stay that object's.
TEST(Pixels, NonsenseLeavesTheNeighboursPainted) {
    enum Outcome { Absent, Painted, Anything };
    struct Case {
        const char* what;
        Object object;
        Outcome outcome;
    };
    LinearGradient nowhere;
    nowhere.set({nan}, {0}, {inf}, {0});
    nowhere.addColor(kRed, nan);
    nowhere.addColor(kRed, inf);
    LinearGradient point;
    point.set({50}, {50}, {50}, {50});
    point.addColor(kRed, 0);
    const Case cases[] = {
        {"rectangle nowhere", fresh(nan, 40, 20, 20), Absent},
        {"rectangle without end", fresh(40, 40, inf, 20), Absent},
        {"rectangle far away", fresh(3e38F, 3e38F, 20, 20), Absent},
        {"huge rectangle", fresh(-1e38F, -1e38F, 3e38F, 3e38F), Painted},
        {"rectangle the other way", fresh(60, 60, -20, -20), Painted},
        {"radius nowhere", rect([](Rect& r) { r.setRx(nan), r.setRy(nan); }), Anything},
        {"huge radii", rect([](Rect& r) { r.setRx(1e30F), r.setRy(inf); }), Painted},
        {"negative radii", rect([](Rect& r) { r.setRx(-5), r.setRy(-5); }), Painted},
        {"scaled to nothing", rect([](Rect& r) { r.setScale(0, 0); }), Absent},
        {"scaled to a line", rect([](Rect& r) { r.setScale(1, 0); }), Absent},
        {"scaled without bound", rect([](Rect& r) { r.setScale(3e38F, 3e38F); }), Anything},
        {"moved nowhere", rect([](Rect& r) { r.setTranslate(nan, inf); }), Absent},
        {"gradient nowhere", rect([&](Rect& r) { r.setFillColor(nowhere); }), Anything},
        {"gradient without length", rect([&](Rect& r) { r.setFillColor(point); }), Anything},
        {"gradient without colours", rect([](Rect& r) { r.setFillColor(LinearGradient()); }),
         Anything},
        {"circle nowhere", circle(nan, nan, 10), Absent},
        {"circle without end", circle(40, 40, inf), Absent},
        {"huge circle", circle(-1e30F, -1e30F, 1e38F), Anything},
        {"circle the other way", circle(60, 60, -10), Painted},
        {"line nowhere", line([](Line& l) { l.setX2(nan); }), Absent},
        {"huge line", line([](Line& l) { l.set(-1e38F, 50, 1e38F, 50); }), Painted},
        {"stroke nowhere", line([](Line& l) { l.setStrokeWidth(nan); }), Absent},
        {"stroke without end", line([](Line& l) { l.setStrokeWidth(inf); }), Anything},
        {"negative stroke", line([](Line& l) { l.setStrokeWidth(-4); }), Absent},
        {"dash of zeros", line([](Line& l) {
             l.setStrokeDashArray({0, 0});
         }),
         Anything},
        {"negative dash", line([](Line& l) {
             l.setStrokeDashArray({-4, 2});
         }),
         Anything},
        {"dash nowhere", line([](Line& l) {
             l.setStrokeDashArray({nan, inf});
         }),
         Anything},
        {"tiny dash", line([](Line& l) { l.setStrokeDashArray({1e-38F}); }), Anything},
        {"dash from nowhere",
         line([](Line& l) { l.setStrokeDashArray({4}), l.setStrokeDashOffset(nan); }), Anything},
        {"outline without a beginning",
         path([](Path& p) { p.line(60, 40, false), p.close(), p.close(); }), Anything},
        {"curve to nowhere",
         path([](Path& p) { p.move(40, 40, false), p.cubicCurve(60, 60, nan, inf, 0, 0, false); }),
         Absent},
        {"sweep without end", path([](Path& p) { p.arc(50, 50, 9, 9, 0, 0, inf); }), Absent},
        {"huge sweep", path([](Path& p) { p.arc(50, 50, 9, 9, 0, 0, 1e30F); }), Anything},
        {"clip nowhere", clip({nan, 0, 100, 100}), Anything},
        {"clip without size", clip({50, 50, 0, 0}), Absent},
        {"clip the other way", clip({100, 100, -100, -100}), Painted},
        {"clip without end", clip({0, 0, inf, inf}), Anything},
    };
    for (const Case& c : cases) {
        const auto group = DisplayFactory::createContainer();
        const auto before = filled(DisplayFactory::createRect(), kGreen);
        const auto after = filled(DisplayFactory::createCircle(), kBlue);
        before->set(0, 0, 20, 20);
        after->set(80, 80, 10);
        for (const Object& object : {Object(before), c.object, Object(after)}) {
            group->add(object);
        }
        platform::CGBitmapContext canvas(100, 100);
        SetCurrentCanvas(&canvas);
        group->validate({0, 0, 100, 100});
        SetCurrentCanvas(nullptr);

        EXPECT_EQ(probe(canvas, 90, 90), kBlue) << c.what;
        if (c.outcome == Absent) {
            EXPECT_EQ(probe(canvas, 10, 10), kGreen) << c.what;
        }
        if (c.outcome != Anything) {
            EXPECT_EQ(probe(canvas, 50, 50), c.outcome == Painted ? kRed : 0) << c.what;
        }
        EXPECT_TRUE(group->getFrame().isWithinReach()) << c.what;
        EXPECT_TRUE(group->getFrame().contains({100, 100})) << c.what;
    }
}

}  // namespace
}  // namespace orvane::display::graphics
