#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "orvane/orvane.h"
#include "platform/raster/CGBitmapContext.h"
#include "tests/graphics/painted.h"
#include "tests/tree/FakeLayer.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;
using std::string;

const string kOpen = "saveGState() concatCTM(1 0 0 1 0 0) ";
const string kClose = " restoreGState()";
const string kBlackFill = "setRGBFillColor(0 0 0 1) ";
const string kThinStroke = "setLineWidth(0) setRGBStrokeColor(0 0 0 1) ";
const string kTenByTen = "addPath(M 0 0 L 10 0 L 10 10 L 0 10 Z) ";
constexpr int kNone = -1;

// Returns the canvas calls of an object, separated by blanks.
string paint(DisplayObject& object) {
    string calls = painted(object);
    std::ranges::replace(calls, '\n', ' ');
    return calls.substr(0, calls.size() - (calls.empty() ? 0 : 1));
}

// Returns the calls inside the bracket of an object without a transformation.
string painting(DisplayObject& object) {
    const string calls = paint(object);
    EXPECT_TRUE(calls.starts_with(kOpen) && calls.ends_with(kClose)) << calls;
    return calls.substr(kOpen.size(), calls.size() - kOpen.size() - kClose.size());
}

string outline(DisplayObject& object) {
    const string calls = paint(object);
    const auto begin = calls.find("addPath(") + 8;
    return calls.substr(begin, calls.find(')', begin) - begin);
}

LinearGradient redToBlue() {
    LinearGradient gradient;
    gradient.addColor(0xFFFF0000, 0);
    gradient.addColor(0x000000FF, 1);
    return gradient;
}

// A layer that counts requests for a repaint.
class MarkingLayer : public FakeLayer {
public:
    void markDirty(const std::shared_ptr<DisplayObject>& object) override {
        ++marks_;
        FakeLayer::markDirty(object);
    }

    // Returns the number of requests since the last call.
    int takeMarks() { return std::exchange(marks_, 0); }

private:
    int marks_ = 0;
};

// A square on a layer that counts requests for a repaint.
class Painting : public testing::Test {
protected:
    void SetUp() override {
        rect_->set(0, 0, 10, 10);
        layer_->addObject(rect_);
        layer_->takeMarks();
    }

    std::shared_ptr<MarkingLayer> layer_ = std::make_shared<MarkingLayer>();
    std::shared_ptr<Rect> rect_ = DisplayFactory::createRect();
};

TEST_F(Painting, BracketsNestAndAClipPrecedesTheTransformation) {
    const auto clip = DisplayFactory::createClipContainer(false);
    const auto group = DisplayFactory::createContainer();
    clip->setBounds({5, 5, 30, 20});
    clip->setTranslate(3, 4);
    group->setMatrix(0, -1, 10, 1, 0, 0);
    clip->add(group);
    const auto rect = DisplayFactory::createRect();
    rect->set(0, 0, 10, 10);
    group->add(rect);
    const auto line = DisplayFactory::createLine();
    line->set(1, 2, 3, 4);
    group->add(line);

    EXPECT_EQ(paint(*clip),
              "saveGState() clipToRect(5 5 30x20) concatCTM(1 0 0 1 3 4) "
              "saveGState() concatCTM(0 1 -1 0 10 0) " +
                  kOpen + kBlackFill + kThinStroke + kTenByTen + "drawPath(3)" + kClose + " " +
                  kOpen + kThinStroke + "addPath(M 1 2 L 3 4) drawPath(2)" + kClose + kClose +
                  kClose);
    EXPECT_EQ(clip->getValidFrame(), Box(5, 5, 30, 20));
    // Outside a paint pass there is no canvas.
    ASSERT_EQ(GetCurrentCanvas(), nullptr);
    clip->validate({6, 6, 1, 1});
}

TEST_F(Painting, DrawsTheOutlineOfEachKind) {
    const auto rect = DisplayFactory::createRect();
    const auto circle = DisplayFactory::createCircle();
    const auto ellipse = DisplayFactory::createEllipse();
    const auto line = DisplayFactory::createLine();
    const auto polyline = DisplayFactory::createPolyline();
    rect->set(1, 2, 3, 4);
    circle->set(10, 20, 5);
    ellipse->set(10, 20, 30, 40);
    line->set(1, 2, 3, 4);
    polyline->set({0, 0, 10, 0, 10, 10, 99}, true);
    const std::tuple<std::shared_ptr<DisplayObject>, Box, string> kinds[] = {
        {rect, {1, 2, 3, 4}, "M 1 2 L 4 2 L 4 6 L 1 6 Z"},
        // The point is the corner of the box, not the center.
        {circle,
         {10, 20, 10, 10},
         "M 20 25 C 20 27.7614 17.7614 30 15 30 C 12.2386 30 10 27.7614 10 25 "
         "C 10 22.2386 12.2386 20 15 20 C 17.7614 20 20 22.2386 20 25 Z"},
        // The sizes are the whole sides of the box, not radii.
        {ellipse,
         {10, 20, 30, 40},
         "M 40 40 C 40 51.0457 33.2843 60 25 60 C 16.7157 60 10 51.0457 10 40 "
         "C 10 28.9543 16.7157 20 25 20 C 33.2843 20 40 28.9543 40 40 Z"},
        {line, {1, 2, 2, 2}, "M 1 2 L 3 4"},
        {polyline, {0, 0, 10, 10}, "M 0 0 L 10 0 L 10 10 Z"},
    };
    for (const auto& [object, frame, path] : kinds) {
        EXPECT_EQ(object->getFrame(), frame) << object->getDescription();
        EXPECT_EQ(outline(*object), path) << object->getDescription();
    }
    polyline->set({0, 0, 10, 0, 10, 20}, false);
    EXPECT_EQ(outline(*polyline), "M 0 0 L 10 0 L 10 20");
    polyline->set(std::vector<float>(4001, 1.0F), false);  // more than the stack buffer holds
    EXPECT_EQ(polyline->getBounds(), Box(1, 1, 0, 0));
    polyline->set({}, true);
    EXPECT_EQ(polyline->getBounds(), Box(1, 1, 0, 0)) << "an empty outline keeps the bounds";
}

TEST_F(Painting, EveryGeometrySetterRebuildsAndRepaints) {
    const auto rect = DisplayFactory::createRect();
    const auto circle = DisplayFactory::createCircle();
    const auto ellipse = DisplayFactory::createEllipse();
    const auto line = DisplayFactory::createLine();
    const std::tuple<std::shared_ptr<DisplayObject>, std::function<void()>, Box> steps[] = {
        {rect, [&] { rect->setWidth(3); }, {0, 0, 3, 0}},
        {rect, [&] { rect->setHeight(4); }, {0, 0, 3, 4}},
        {rect, [&] { rect->setX(1); }, {1, 0, 3, 4}},
        {rect, [&] { rect->setY(2); }, {1, 2, 3, 4}},
        {circle, [&] { circle->setR(3); }, {0, 0, 6, 6}},
        {circle, [&] { circle->setCx(1); }, {1, 0, 6, 6}},
        {circle, [&] { circle->setCy(2); }, {1, 2, 6, 6}},
        {ellipse, [&] { ellipse->setRx(3); }, {0, 0, 3, 0}},
        {ellipse, [&] { ellipse->setRy(4); }, {0, 0, 3, 4}},
        {ellipse, [&] { ellipse->setCx(1); }, {1, 0, 3, 4}},
        {ellipse, [&] { ellipse->setCy(2); }, {1, 2, 3, 4}},
        {line, [&] { line->setX2(-3.5F); }, {-3.5, 0, 3.5, 0}},  // never rounded
        {line, [&] { line->setY2(4); }, {-3.5, 0, 3.5, 4}},
        {line, [&] { line->setX1(1); }, {-3.5, 0, 4.5, 4}},
        {line, [&] { line->setY1(6); }, {-3.5, 4, 4.5, 2}},
        {line, [&] { line->setStrokeWidth(3); }, {-5.5, 2, 8.5, 6}},
    };
    for (const auto& [object, set, frame] : steps) {
        layer_->addObject(object);
        layer_->takeMarks();
        set();
        EXPECT_EQ(layer_->takeMarks(), 1);
        EXPECT_EQ(object->getFrame(), frame);
    }
    // One radius alone makes a rounded rectangle; with the other one at 0 its corners are sharp.
    rect->setRx(1);
    EXPECT_EQ(outline(*rect), "M 1 2 L 4 2 L 4 6 L 1 6 Z");
    rect->setRy(2);
    EXPECT_EQ(std::ranges::count(outline(*rect), 'C'), 4);
    EXPECT_EQ(layer_->takeMarks(), 2);
}

TEST_F(Painting, APathUsesAbsoluteCoordinatesAndItsBoundsFollowFinish) {
    const auto path = DisplayFactory::createPath();
    layer_->addObject(path);
    layer_->takeMarks();
    path->start();
    path->move(10, 10, true);
    path->line(20, 10, true);
    path->cubicCurve(40, 10, 25, 0, 35, 20, true);
    path->quadCurve(70, 10, 55, 10, true);
    path->close();
    EXPECT_EQ(path->getInnerBounds(), Box()) << "the bounds wait for finish";
    EXPECT_EQ(layer_->takeMarks(), 0);
    path->finish();
    EXPECT_EQ(layer_->takeMarks(), 1);
    EXPECT_EQ(outline(*path), "M 10 10 L 20 10 C 25 0 35 20 40 10 C 50 10 60 10 70 10 Z");
    const Box bounds = path->getInnerBounds();
    EXPECT_EQ(bounds.width, 60);
    path->start();
    path->finish();
    EXPECT_EQ(path->getInnerBounds(), bounds) << "an empty outline keeps the previous bounds";
    EXPECT_EQ(outline(*path), "");

    path->start();
    path->arc(100, 50, 20, 10, 90, 0, 180);  // rotated: the long axis is vertical
    path->finish();
    EXPECT_TRUE(outline(*path).starts_with("M 100 70 ")) << outline(*path);
    EXPECT_EQ(path->getBounds(), Box(90, 30, 10, 40)) << "the half that the arc passes through";
}

TEST_F(Painting, DrawsSolidFillAndStrokeInEachCombination) {
    EXPECT_EQ(painting(*rect_), kBlackFill + kThinStroke + kTenByTen + "drawPath(3)");
    rect_->setFillColor(127, 63, 31, 255);
    rect_->setStrokeColor(255, 127, 63, 31);
    rect_->setStrokeWidth(2.5F);
    rect_->setStrokeDashArray({4, 2});
    rect_->setStrokeDashOffset(1);
    EXPECT_EQ(painting(*rect_),
              "setRGBFillColor(0.5 0.25 0.125 1) setLineWidth(2.5) "
              "setRGBStrokeColor(1 0.5 0.25 0.125) setLineDash(1, [4; 2]) " +
                  kTenByTen + "drawPath(3)");
    rect_->setStrokeDashArray({});
    rect_->setStrokeWidth(0);
    rect_->setFillColor(0xFF7F7F7F);
    rect_->setStrokeColor(0, 0, 0, kNone);
    EXPECT_EQ(painting(*rect_), "setRGBFillColor(0.5 0.5 0.5 1) " + kTenByTen + "drawPath(0)");
    rect_->setFillColor(0, 0, 0, kNone);
    EXPECT_EQ(paint(*rect_), "") << "invisible objects are not painted";
    rect_->setStrokeColor(0x1F7F3FFF);
    EXPECT_EQ(painting(*rect_),
              "setLineWidth(0) setRGBStrokeColor(0.5 0.25 1 0.125) " + kTenByTen + "drawPath(2)");
}

TEST_F(Painting, IgnoresPatternsAndStrokeGradients) {
    rect_->setPattern({});
    rect_->setStrokeColor(redToBlue());
    EXPECT_EQ(layer_->takeMarks(), 0);
    EXPECT_EQ(painting(*rect_), kBlackFill + kThinStroke + kTenByTen + "drawPath(3)");
    rect_->setFillColor(redToBlue());
    rect_->setFillColor(1, 2, 3, 4);
    rect_->setFillColor(0U);
    rect_->setStrokeColor(1, 2, 3, 4);
    rect_->setStrokeColor(0U);
    EXPECT_EQ(layer_->takeMarks(), 5);
}

TEST_F(Painting, AGradientClipsToTheOutlineUntilAColorReplacesIt) {
    LinearGradient gradient = redToBlue();
    gradient.set({1}, {2}, {3}, {4});
    rect_->setFillColor(gradient);
    gradient.setX1({99});  // changes only the original; a copy is painted
    const string filled = kTenByTen +
                          "clip() drawLinearGradient([1 0.00390625 0.00390625 1; 0.00390625 "
                          "0.00390625 1 0.00390625], [0; 1], 1 2, 3 4, 3) ";
    EXPECT_EQ(painting(*rect_), filled + kThinStroke + kTenByTen + "drawPath(2)");
    rect_->setStrokeColor(0, 0, 0, kNone);
    EXPECT_EQ(painting(*rect_), filled + kTenByTen + "drawPath(2)") << "it is stroked even so";
    rect_->setFillColor(0xFF7F7F7F);
    EXPECT_EQ(painting(*rect_), "setRGBFillColor(0.5 0.5 0.5 1) " + kTenByTen + "drawPath(0)");
}

TEST_F(Painting, AGradientAxisInFractionsRefersToTheBoundsWithTheStroke) {
    // In user space an axis is in object coordinates, except for the default axis.
    const struct {
        float x1, y1, x2, y2;
        bool userSpace;
        const char* axis;
    } cases[] = {
        {0, 0, 10, 5, true, "0 0, 10 5"},        {0, 0, 0, 0, true, "0 0, 0 0"},
        {0, 0, 1, 0, true, "-2 -2, 12 -2"},      {0, 0, 1, 1e-39F, true, "-2 -2, 12 -2"},
        {0, 0, 1, 1e-30F, true, "0 0, 1 1e-30"}, {5, 0, 1, 0, true, "5 0, 1 0"},
        {0, 5, 1, 0, true, "0 5, 1 0"},          {0, 0, 0.5F, 0, true, "0 0, 0.5 0"},
        {0, 0, 1, 5, true, "0 0, 1 5"},          {0, 0, 1, 0, false, "-2 -2, 12 -2"},
        {0.5F, 0, 0.5F, 1, false, "5 -2, 5 12"},
    };
    rect_->setStrokeWidth(3);
    for (const auto& c : cases) {
        LinearGradient gradient = redToBlue();
        gradient.set({c.x1}, {c.y1}, {c.x2}, {c.y2});
        gradient.setUserSpace(c.userSpace);
        rect_->setFillColor(gradient);
        EXPECT_NE(painting(*rect_).find("[0; 1], " + string(c.axis) + ", 3)"), string::npos)
            << c.axis << " not in " << painting(*rect_);
    }
    // The axis is rounded to float.
    rect_->setStrokeWidth(0);
    LinearGradient gradient = redToBlue();
    gradient.set({0.1F}, {0.2F}, {0.3F}, {0.7F});
    gradient.setUserSpace(false);
    rect_->setFillColor(gradient);
    EXPECT_NE(painted(*rect_, 12).find(", 1 2, 3 7, 3)"), string::npos) << painted(*rect_, 12);
}

TEST_F(Painting, BeyondATinyGradientAxisIsItsLastColor) {
    LinearGradient gradient = redToBlue();
    gradient.set({0}, {0}, {1e-38F}, {0});
    rect_->setFillColor(gradient);
    rect_->setScale(100, 100);
    platform::CGBitmapContext canvas(1000, 1);
    paintOn(canvas, *rect_, {0, 0, 1000, 1});
    EXPECT_EQ(canvas.pixels()[999], 0x01000001U) << "blue with an alpha of 1/256, premultiplied";
}

TEST_F(Painting, AnObjectIsPaintedOnlyWhereItTouchesTheDirtyRectangle) {
    const struct {
        const char* what;
        Box frame;
        Box dirty;
        bool painted;
    } cases[] = {
        {"edge shared", {0, 0, 10, 10}, {10, 0, 5, 10}, true},
        {"corner shared", {0, 0, 10, 10}, {10, 10, 5, 5}, false},
        {"apart", {0, 0, 10, 10}, {11, 0, 5, 10}, false},
        {"frame without width", {5, 0, 0, 10}, {0, 0, 10, 10}, true},
        {"frame without extent", {5, 5, 0, 0}, {0, 0, 10, 10}, false},
    };
    for (const auto& [what, frame, dirty, isPainted] : cases) {
        const auto line = DisplayFactory::createLine();
        line->set(static_cast<float>(frame.x), static_cast<float>(frame.y),
                  static_cast<float>(frame.x + frame.width),
                  static_cast<float>(frame.y + frame.height));
        platform::CGRecordingContext canvas;
        paintOn(canvas, *line, dirty);
        EXPECT_EQ(canvas.calls().empty(), !isPainted) << what;
        EXPECT_EQ(line->getValidFrame(), isPainted ? frame : Box()) << what;
    }
}

TEST_F(Painting, AnObjectIsVisibleByItsFillOrItsStrokeUnderVisibleAncestors) {
    const auto group = DisplayFactory::createContainer();
    group->add(rect_);
    for (unsigned flags = 0; flags < 16; ++flags) {
        rect_->setVisible((flags & 1) != 0);
        group->setVisible((flags & 2) != 0);
        rect_->setFillColor(0, 0, 0, (flags & 4) != 0 ? 255 : kNone);
        rect_->setStrokeColor(0, 0, 0, (flags & 8) != 0 ? 255 : kNone);
        EXPECT_EQ(paint(*rect_).empty(), (flags & 3) != 3 || flags < 4) << flags;
    }
}

TEST_F(Painting, BoundsIncludeTheStrokeAndAreIntegers) {
    const struct {
        float x, y, width, height, stroke;
        Box bounds;
    } cases[] = {
        {0, 0, 10, 10, 2, {-1, -1, 12, 12}},
        {0, 0, 10, 10, 3, {-2, -2, 14, 14}},
        // A negative width turns the box inside out; the result is normalized.
        {0, 0, 10, 10, -20, {0, 0, 10, 10}},
        // The position is rounded to nearest, ties to even; the size is rounded up.
        {2.5, 3.5, 4.2F, 5, 0, {2, 4, 5, 5}},
    };
    rect_->setStrokeColor(0, 0, 0, kNone);  // an invisible stroke counts, too
    for (const auto& c : cases) {
        rect_->set(c.x, c.y, c.width, c.height);
        rect_->getFrame();  // known, and forgotten by the next line
        rect_->setStrokeWidth(c.stroke);
        EXPECT_EQ(rect_->getBounds(), c.bounds) << c.x << " with width " << c.stroke;
        EXPECT_EQ(rect_->getFrame(), rect_->getTransformation().mapRect(c.bounds));
        rect_->setMatrix(0, -2, 100, 1, 0, 0);  // a quarter turn, twice as wide, moved
        const Box& b = c.bounds;
        EXPECT_EQ(rect_->getFrame(), Box(100 - 2 * (b.y + b.height), b.x, 2 * b.height, b.width));
    }
}

TEST_F(Painting, TheFrameOfAClipIsItsBoundsTransformedByItsParent) {
    const auto clip = DisplayFactory::createClipContainer(false);
    auto parent = DisplayFactory::createContainer();
    layer_->addObject(clip);
    layer_->takeMarks();
    clip->setBounds({1, 2, 30, 40});
    EXPECT_EQ(layer_->takeMarks(), 1);
    rect_->setTranslate(500, 500);
    clip->add(rect_);
    clip->setScale(7, 7);
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40))
        << "neither children nor its own transformation count";
    parent->add(clip);
    parent->setTranslate(100, 0);
    EXPECT_EQ(clip->getFrame(), Box(101, 2, 30, 40));
    parent.reset();  // without having erased the clip
    clip->resetFrame();
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40));
}

TEST_F(Painting, ExtractingAClipWrapsItsLayerOnceAtItsPlace) {
    const auto group = DisplayFactory::createContainer();
    layer_->addObject(group);
    std::vector<std::shared_ptr<SizedContainer>> clips;
    for (int i = 0; i < 3; ++i) {
        clips.push_back(DisplayFactory::createClipContainer(false));
        group->add(clips.back());
    }
    const auto below = clips[0]->extractIntoLayer(nullptr);
    const auto above = clips[2]->extractIntoLayer(nullptr);
    const auto wrapper = clips[1]->extractAnimationLayer();
    ASSERT_TRUE(wrapper);
    EXPECT_EQ(clips[1]->extractAnimationLayer(), wrapper);
    EXPECT_TRUE(wrapper->isFake());
    EXPECT_EQ(layer_->getSublayers(), (LayerList{below, wrapper, above}));
    EXPECT_TRUE(clips[1]->ownsLayer());
    EXPECT_EQ(wrapper->getSublayers(), LayerList{clips[1]->getLayer()});
    EXPECT_FALSE(layer_->isValidationLocked());
    const auto alone = DisplayFactory::createClipContainer(false);
    EXPECT_EQ(alone->extractAnimationLayer(), nullptr) << "there is no superlayer for a wrapper";
    EXPECT_TRUE(alone->ownsLayer());
}

TEST_F(Painting, TheFillRuleChoosesTheModeWithoutARepaint) {
    using FillRule = PathFillStyleable::FillRule;
    const auto polyline = DisplayFactory::createPolyline();
    layer_->addObject(polyline);
    polyline->set({0, 0, 10, 0, 10, 10}, true);
    layer_->takeMarks();
    polyline->setFillRule(FillRule::EvenOdd);
    EXPECT_EQ(layer_->takeMarks(), 0);
    EXPECT_TRUE(painting(*polyline).ends_with("drawPath(4)"));
    polyline->setStrokeColor(0, 0, 0, kNone);
    EXPECT_TRUE(painting(*polyline).ends_with("drawPath(1)"));
    polyline->setFillColor(redToBlue());
    EXPECT_TRUE(painting(*polyline).ends_with("drawPath(2)"));
    polyline->setFillColor(0xFF000000);
    polyline->setFillRule(FillRule::NonZero);
    EXPECT_TRUE(painting(*polyline).ends_with("drawPath(0)"));
}

}  // namespace
}  // namespace orvane::display::graphics
