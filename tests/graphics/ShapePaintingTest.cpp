#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "orvane/orvane.h"
#include "tests/graphics/MarkingLayer.h"
#include "tests/graphics/Recording.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;

// The calls inside the object's bracket.
Calls painting(DisplayObject& object) {
    Calls calls = paint(object);
    if (calls.size() < 3) {
        return {};
    }
    EXPECT_EQ(calls[0], "saveGState()");
    EXPECT_EQ(calls[1].substr(0, 10), "concatCTM(");
    EXPECT_EQ(calls.back(), "restoreGState()");
    return {calls.begin() + 2, calls.end() - 1};
}

constexpr auto kTenByTen = "addPath(M 0 0 L 10 0 L 10 10 L 0 10 Z)";

std::shared_ptr<Rect> makeRect() {
    const auto rect = DisplayFactory::createRect();
    rect->set(0, 0, 10, 10);
    return rect;
}

LinearGradient redToBlue() {
    LinearGradient gradient;
    gradient.addColor(0xFFFF0000, 0);
    gradient.addColor(0x000000FF, 1);
    return gradient;
}

// ---- outlines ----

TEST(ShapeOutline, EachKindDrawsItsOwn) {
    const auto circle = DisplayFactory::createCircle();
    circle->set(10, 20, 5);
    EXPECT_EQ(circle->getInnerBounds(), Box(10, 20, 10, 10)) << "the point is the corner";
    const auto ellipse = DisplayFactory::createEllipse();
    ellipse->set(10, 20, 30, 40);
    EXPECT_EQ(ellipse->getInnerBounds(), Box(10, 20, 30, 40)) << "whole sides, not radii";
    EXPECT_EQ(outline(*ellipse),
              "M 40 40 C 40 51.0457 33.2843 60 25 60 C 16.7157 60 10 51.0457 10 40 "
              "C 10 28.9543 16.7157 20 25 20 C 33.2843 20 40 28.9543 40 40 Z");

    const auto rect = DisplayFactory::createRect();
    rect->set(1, 2, 3, 4);
    EXPECT_EQ(outline(*rect), "M 1 2 L 4 2 L 4 6 L 1 6 Z");
    rect->setRx(1);
    rect->setRy(2);
    EXPECT_EQ(std::ranges::count(outline(*rect), 'C'), 4);
    rect->setRx(0);
    rect->setRy(0);
    EXPECT_EQ(outline(*rect), "M 1 2 L 4 2 L 4 6 L 1 6 Z");

    const auto line = DisplayFactory::createLine();
    line->set(1, 2, 3, 4);
    EXPECT_EQ(outline(*line), "M 1 2 L 3 4");

    const auto polyline = DisplayFactory::createPolyline();
    polyline->set({0, 0, 10, 0, 10, 10, 99}, true);
    EXPECT_EQ(outline(*polyline), "M 0 0 L 10 0 L 10 10 Z") << "the odd number is ignored";
    polyline->set({0, 0, 10, 0, 10, 20}, false);
    EXPECT_EQ(outline(*polyline), "M 0 0 L 10 0 L 10 20");
    EXPECT_EQ(polyline->getBounds(), Box(0, 0, 10, 20));
    polyline->set(std::vector<float>(4001, 1.0F), false);
    EXPECT_EQ(polyline->getBounds(), Box(1, 1, 0, 0));
    polyline->set({}, true);
    EXPECT_EQ(polyline->getBounds(), Box(1, 1, 0, 0)) << "an empty outline keeps the bounds";
}

TEST(ShapeOutline, EverySetterRebuildsAndRepaints) {
    const auto rect = DisplayFactory::createRect();
    const auto circle = DisplayFactory::createCircle();
    const auto ellipse = DisplayFactory::createEllipse();
    const auto line = DisplayFactory::createLine();
    struct Step {
        std::shared_ptr<DisplayObject> object;
        std::function<void()> set;
        Box frame;
    };
    const Step steps[] = {
        {rect, [&] { rect->setX(1); }, {}},
        {rect, [&] { rect->setY(2); }, {}},
        {rect, [&] { rect->setWidth(3); }, {1, 2, 3, 0}},
        {rect, [&] { rect->setHeight(4); }, {1, 2, 3, 4}},
        {rect, [&] { rect->setRx(1); }, {1, 2, 3, 4}},
        {rect, [&] { rect->setRy(1); }, {1, 2, 3, 4}},
        {circle, [&] { circle->setR(3); }, {0, 0, 6, 6}},
        {circle, [&] { circle->setCx(1); }, {1, 0, 6, 6}},
        {circle, [&] { circle->setCy(2); }, {1, 2, 6, 6}},
        {ellipse, [&] { ellipse->setRx(3); }, {0, 0, 3, 0}},
        {ellipse, [&] { ellipse->setRy(4); }, {0, 0, 3, 4}},
        {ellipse, [&] { ellipse->setCx(1); }, {1, 0, 3, 4}},
        {ellipse, [&] { ellipse->setCy(2); }, {1, 2, 3, 4}},
        {line, [&] { line->setX2(-3.5F); }, {-3.5, 0, 3.5, 0}},
        {line, [&] { line->setY2(4); }, {-3.5, 0, 3.5, 4}},
        {line, [&] { line->setX1(1); }, {-3.5, 0, 4.5, 4}},
        {line, [&] { line->setY1(6); }, {-3.5, 4, 4.5, 2}},
        {line, [&] { line->setStrokeWidth(3); }, {-5.5, 2, 8.5, 6}},
    };
    const auto layer = std::make_shared<MarkingLayer>();
    for (const std::shared_ptr<DisplayObject>& object :
         std::initializer_list<std::shared_ptr<DisplayObject>>{rect, circle, ellipse, line}) {
        layer->addObject(object);
    }
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        const Step& step = steps[i];
        static_cast<void>(step.object->getFrame());
        layer->takeMarks();
        step.set();
        EXPECT_EQ(layer->takeMarks(), 1) << "step " << i;
        if (!step.frame.isEmpty()) {
            EXPECT_EQ(step.object->getFrame(), step.frame) << "step " << i;
        }
    }
}

TEST(Path, DrawsInAbsoluteCoordinatesBetweenStartAndFinish) {
    const auto path = DisplayFactory::createPath();
    const auto layer = std::make_shared<MarkingLayer>();
    layer->addObject(path);
    layer->takeMarks();

    path->start();
    path->move(10, 10, true);
    path->line(20, 10, true);
    path->cubicCurve(40, 10, 25, 0, 35, 20, true);
    path->quadCurve(70, 10, 55, 10, true);
    path->close();
    EXPECT_EQ(path->getInnerBounds(), Box()) << "the bounds wait for finish";
    EXPECT_EQ(layer->takeMarks(), 0);
    path->finish();
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(outline(*path), "M 10 10 L 20 10 C 25 0 35 20 40 10 C 50 10 60 10 70 10 Z");
    const Box bounds = path->getInnerBounds();
    EXPECT_EQ(bounds.x, 10);
    EXPECT_EQ(bounds.width, 60);

    path->start();
    path->move(0, 0, false);
    path->line(1, 1, false);
    EXPECT_EQ(path->getInnerBounds(), bounds) << "the former outline's until finish";
    path->start();
    path->finish();
    EXPECT_EQ(path->getInnerBounds(), bounds);
    EXPECT_EQ(outline(*path), "") << "the outline itself is empty";
}

TEST(Path, AnArcIsAPieceOfAStretchedCircleInDegrees) {
    const auto path = DisplayFactory::createPath();
    path->start();
    path->arc(100, 50, 20, 10, 90, 0, 180);  // turned, the long axis stands upright
    path->finish();
    const Box b = path->getInnerBounds();
    EXPECT_NEAR(b.x, 90, 0.01);
    EXPECT_NEAR(b.y, 30, 0.01);
    EXPECT_NEAR(b.width, 10, 0.01) << "the half on the side that the sweep runs through";
    EXPECT_NEAR(b.height, 40, 0.01);
    EXPECT_TRUE(outline(*path).starts_with("M 100 70 ")) << outline(*path);
}

// ---- styles ----

TEST(ShapeStyle, SolidFillAndStrokeInEachCombination) {
    const int none = -1;
    struct Case {
        const char* what;
        std::function<void(Rect&)> style;
        Calls calls;
    };
    const Case cases[] = {
        {"left alone",
         [](Rect&) {},
         {"setRGBFillColor(0 0 0 1)", "setLineWidth(0)", "setRGBStrokeColor(0 0 0 1)", kTenByTen,
          "drawPath(3)"}},
        {"components and dash",
         [](Rect& r) {
             r.setFillColor(127, 63, 31, 255);
             r.setStrokeColor(255, 127, 63, 31);
             r.setStrokeWidth(2.5F);
             r.setStrokeDashArray({4, 2});
             r.setStrokeDashOffset(1);
         },
         {"setRGBFillColor(0.5 0.25 0.125 1)", "setLineWidth(2.5)",
          "setRGBStrokeColor(1 0.5 0.25 0.125)", "setLineDash(1, [4; 2])", kTenByTen,
          "drawPath(3)"}},
        {"packed colours, zero is not transparent",
         [](Rect& r) {
             r.setFillColor(0);
             r.setStrokeColor(0x1F7F3FFF);
         },
         {"setRGBFillColor(0.00390625 0.00390625 0.00390625 0.00390625)", "setLineWidth(0)",
          "setRGBStrokeColor(0.5 0.25 1 0.125)", kTenByTen, "drawPath(3)"}},
        {"fill alone",
         [](Rect& r) { r.setStrokeColor(0, 0, 0, none); },
         {"setRGBFillColor(0 0 0 1)", kTenByTen, "drawPath(0)"}},
        {"stroke alone",
         [](Rect& r) { r.setFillColor(0, 0, 0, none); },
         {"setLineWidth(0)", "setRGBStrokeColor(0 0 0 1)", kTenByTen, "drawPath(2)"}},
        {"neither",
         [](Rect& r) {
             r.setFillColor(0, 0, 0, none);
             r.setStrokeColor(0, 0, 0, none);
         },
         {}},
        {"dash taken away again",
         [](Rect& r) {
             r.setStrokeDashArray({4, 2});
             r.setStrokeDashArray({});
         },
         {"setRGBFillColor(0 0 0 1)", "setLineWidth(0)", "setRGBStrokeColor(0 0 0 1)", kTenByTen,
          "drawPath(3)"}},
        {"what neither fill nor stroke can do",
         [](Rect& r) {
             r.setPattern({});
             r.setStrokeColor(redToBlue());
         },
         {"setRGBFillColor(0 0 0 1)", "setLineWidth(0)", "setRGBStrokeColor(0 0 0 1)", kTenByTen,
          "drawPath(3)"}},
    };
    for (const Case& c : cases) {
        const auto rect = makeRect();
        c.style(*rect);
        EXPECT_EQ(painting(*rect), c.calls) << c.what;
    }
}

TEST(ShapeStyle, PatternsAndStrokeGradientsLeaveTheDirtyStateAlone) {
    const auto layer = std::make_shared<MarkingLayer>();
    const auto rect = makeRect();
    layer->addObject(rect);
    layer->takeMarks();
    rect->setPattern({});
    rect->setStrokeColor(redToBlue());
    EXPECT_EQ(layer->takeMarks(), 0);
    rect->setFillColor(redToBlue());
    rect->setFillColor(1, 2, 3, 4);
    rect->setFillColor(0U);
    rect->setStrokeColor(1, 2, 3, 4);
    rect->setStrokeColor(0U);
    EXPECT_EQ(layer->takeMarks(), 5);
}

TEST(ShapeStyle, AGradientClipsToTheOutlineAndTheStrokeStaysInsideThatClip) {
    const std::string stops =
        "drawLinearGradient([1 0.00390625 0.00390625 1; 0.00390625 0.00390625 "
        "1 0.00390625], [0; 1], ";
    const auto rect = makeRect();
    LinearGradient gradient = redToBlue();
    gradient.set({1}, {2}, {3}, {4});
    rect->setFillColor(gradient);
    gradient.setX1({99});  // a copy was taken

    EXPECT_EQ(painting(*rect),
              (Calls{kTenByTen, "clip()", stops + "1 2, 3 4, 3)", "setLineWidth(0)",
                     "setRGBStrokeColor(0 0 0 1)", kTenByTen, "drawPath(2)"}));
    rect->setStrokeColor(0, 0, 0, -1);
    EXPECT_EQ(painting(*rect),
              (Calls{kTenByTen, "clip()", stops + "1 2, 3 4, 3)", kTenByTen, "drawPath(2)"}))
        << "stroked with what the canvas holds";

    rect->setFillColor(0xFF7F7F7F);
    EXPECT_EQ(painting(*rect), (Calls{"setRGBFillColor(0.5 0.5 0.5 1)", kTenByTen, "drawPath(0)"}))
        << "a colour ends gradient mode";
}

TEST(ShapeStyle, AGradientsAxisIsResolvedAgainstTheBoundsWithTheStroke) {
    struct Case {
        float x1, y1, x2, y2;
        bool userSpace;
        const char* axis;
    };
    // The rectangle is 10 by 10 with a stroke of 3: its bounds are -2, -2, 14, 14.
    const Case cases[] = {
        {0, 0, 10, 5, true, "0 0, 10 5"},        {0, 0, 0, 0, true, "0 0, 0 0"},
        {0, 0, 1, 0, true, "-2 -2, 12 -2"},      {0, 0, 1, 0, false, "-2 -2, 12 -2"},
        {0.5F, 0, 0.5F, 1, false, "5 -2, 5 12"},
    };
    for (const Case& c : cases) {
        const auto rect = makeRect();
        rect->setStrokeWidth(3);
        LinearGradient gradient = redToBlue();
        gradient.set({c.x1}, {c.y1}, {c.x2}, {c.y2});
        gradient.setUserSpace(c.userSpace);
        rect->setFillColor(gradient);
        const std::string call = painting(*rect).at(2);
        EXPECT_TRUE(call.ends_with(std::string("], ") + c.axis + ", 3)")) << call;
    }
}

TEST(ShapeStyle, GradientsOfAnyNumberOfStopsAreTaken) {
    const auto rect = makeRect();
    LinearGradient gradient;
    rect->setFillColor(gradient);  // none at all
    EXPECT_EQ(painting(*rect).back(), "drawPath(2)");
    for (int i = 0; i < 1000; ++i) {
        gradient.addColor(0xFF000000);
    }
    gradient.addColor(0xFFFFFFFF, 0.5F);  // a position for the first colour alone
    rect->setFillColor(gradient);
    rect->setFillColor(gradient);
    const std::string call = painting(*rect).at(2);
    EXPECT_EQ(std::ranges::count(call, ';'), 2000);
}

TEST(ShapeStyle, TheFillRuleChoosesTheModeAndAsksForNoRepaint) {
    using FillRule = PathFillStyleable::FillRule;
    const auto layer = std::make_shared<MarkingLayer>();
    const auto line = DisplayFactory::createPolyline();
    layer->addObject(line);
    line->set({0, 0, 10, 0, 10, 10}, true);
    layer->takeMarks();

    EXPECT_EQ(painting(*line).back(), "drawPath(3)");
    line->setFillRule(FillRule::EvenOdd);
    EXPECT_EQ(layer->takeMarks(), 0);
    EXPECT_EQ(painting(*line).back(), "drawPath(4)");
    line->setStrokeColor(0, 0, 0, -1);
    EXPECT_EQ(painting(*line).back(), "drawPath(1)");
    line->setFillColor(redToBlue());
    EXPECT_EQ(painting(*line).back(), "drawPath(2)");
    line->setFillRule(FillRule::NonZero);
    line->setFillColor(0xFF000000);
    EXPECT_EQ(painting(*line).back(), "drawPath(0)");
}

TEST(Line, IsStrokedAndNeverRounded) {
    const auto line = DisplayFactory::createLine();
    line->set(10.25F, 5, 2, 1.5F);
    line->setStrokeWidth(1);
    line->setStrokeDashArray({3});
    EXPECT_EQ(line->getBounds(), Box(1, 0.5, 10.25, 5.5));
    EXPECT_EQ(painting(*line),
              (Calls{"setLineWidth(1)", "setRGBStrokeColor(0 0 0 1)", "setLineDash(0, [3])",
                     "addPath(M 10.25 5 L 2 1.5)", "drawPath(2)"}));
    line->setStrokeColor(0, 0, 0, -1);
    EXPECT_TRUE(paint(*line).empty());
}

}  // namespace
}  // namespace orvane::display::graphics
