// Tests of the model of drawables, without a canvas.

#include <gtest/gtest.h>

#include <vector>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/Shape.h"
#include "tests/graphics/MarkingLayer.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;

// An object whose canvas operations do nothing.
template <typename Base>
class Bare : public virtual Base {
protected:
    void storeState() override {}
    void applyTransform() override {}
    void restoreState() override {}
};

using Clip = Bare<ClipContainer>;
using Group = Bare<Container>;

class CountingShape : public Bare<Shape> {
public:
    geometry::Rect<double> getInnerBounds() override { return box; }
    void setFillColor(unsigned, unsigned, unsigned, unsigned) override {}
    void setFillColor(unsigned) override {}
    void setFillColor(const LinearGradient&) override {}
    void setPattern(const Pattern&) override {}
    void setStrokeColor(int, int, int, int) override {}
    void setStrokeColor(unsigned) override {}
    void setStrokeColor(const LinearGradient&) override {}
    bool isFillVisible() const override { return fillVisible; }
    bool isStrokeVisible() const override { return strokeVisible; }

    Box box{0, 0, 10, 10};
    bool fillVisible = true;
    bool strokeVisible = true;
    int painted = 0;

protected:
    void doValidate(const Box&) override { ++painted; }
};

// A group that contains a shape and has a layer of its own.
class ModelDrawable : public testing::Test {
protected:
    void SetUp() override {
        group_->add(shape_);
        layer_->addObject(group_);
    }

    std::shared_ptr<Group> group_ = std::make_shared<Group>();
    std::shared_ptr<CountingShape> shape_ = std::make_shared<CountingShape>();
    std::shared_ptr<MarkingLayer> layer_ = std::make_shared<MarkingLayer>();
};

TEST_F(ModelDrawable, IsPaintedOnlyWhereItTouchesTheDirtyRectangle) {
    const struct {
        const char* what;
        Box frame;
        Box dirty;
        bool painted;
    } cases[] = {
        {"inside", {0, 0, 10, 10}, {2, 2, 1, 1}, true},
        {"edge shared", {0, 0, 10, 10}, {10, 0, 5, 10}, true},
        {"corner shared", {0, 0, 10, 10}, {10, 10, 5, 5}, false},
        {"apart", {0, 0, 10, 10}, {11, 0, 5, 10}, false},
        {"frame without width", {5, 0, 0, 10}, {0, 0, 10, 10}, true},
        {"frame without extent", {5, 5, 0, 0}, {0, 0, 10, 10}, false},
    };
    for (const auto& c : cases) {
        const auto shape = std::make_shared<CountingShape>();
        shape->box = c.frame;
        shape->validate(c.dirty);
        EXPECT_EQ(shape->painted, c.painted ? 1 : 0) << c.what;
        EXPECT_EQ(shape->getValidFrame(), c.painted ? c.frame : Box()) << c.what;
    }
}

TEST_F(ModelDrawable, IsVisibleByItsFillOrItsStrokeUnderVisibleAncestors) {
    for (unsigned flags = 0; flags < 16; ++flags) {
        shape_->setVisible((flags & 1) != 0);
        group_->setVisible((flags & 2) != 0);
        shape_->fillVisible = (flags & 4) != 0;
        shape_->strokeVisible = (flags & 8) != 0;
        shape_->painted = 0;
        shape_->validate({0, 0, 10, 10});
        EXPECT_EQ(shape_->painted, (flags & 3) == 3 && flags >= 4 ? 1 : 0) << flags;
    }
}

TEST_F(ModelDrawable, BoundsIncludeTheStrokeAndAreIntegers) {
    const struct {
        Box box;
        float width;
        Box bounds;
    } cases[] = {
        {{0, 0, 10, 10}, 0, {0, 0, 10, 10}},
        {{0, 0, 10, 10}, 1, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 2, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 3, {-2, -2, 14, 14}},
        // A negative width turns the box inside out; the result is normalized.
        {{0, 0, 10, 10}, -20, {0, 0, 10, 10}},
        // The position is rounded to nearest, ties to even; the size is rounded up.
        {{2.5, 3.5, 4.2, 5}, 0, {2, 4, 5, 5}},
        {{10.4, 10.6, -3.2, 5}, 0, {7, 11, 4, 5}},
    };
    for (const auto& c : cases) {
        const auto shape = std::make_shared<CountingShape>();
        shape->box = c.box;
        shape->strokeVisible = false;  // an invisible stroke counts, too
        shape->setStrokeWidth(c.width);
        EXPECT_EQ(shape->getBounds(), c.bounds) << c.box.x << " with width " << c.width;
        shape->setMatrix(0, -2, 100, 1, 0, 0);  // a quarter turn, twice as wide, moved
        const Box& b = c.bounds;
        EXPECT_EQ(shape->getFrame(), Box(100 - 2 * (b.y + b.height), b.x, 2 * b.height, b.width));
    }
}

TEST_F(ModelDrawable, TheFrameOfAClipIsItsBoundsTransformedByItsParent) {
    const auto clip = std::make_shared<Clip>();
    const auto layer = std::make_shared<MarkingLayer>();
    layer->addObject(clip);
    EXPECT_EQ(layer->getLayerFrame(), Box());
    layer->takeMarks();
    clip->setBounds({1, 2, 30, 40});
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(layer->getLayerFrame(), Box(1, 2, 30, 40));
    shape_->setTranslate(500, 500);
    clip->add(shape_);
    clip->setScale(7, 7);
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40))
        << "neither children nor its own transformation count";

    auto parent = std::make_shared<Group>();
    group_->add(parent);
    parent->add(clip);
    parent->setTranslate(100, 0);
    group_->setScale(2, 2);
    EXPECT_EQ(clip->getFrame(), Box(202, 4, 60, 80));
    group_->clear();
    parent.reset();  // the parent is destroyed without having erased the clip
    clip->resetFrame();
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40));
}

TEST_F(ModelDrawable, ExtractingAClipWrapsItsLayerOnceAtItsPlace) {
    std::vector<std::shared_ptr<Clip>> clips;
    for (int i = 0; i < 3; ++i) {
        clips.push_back(std::make_shared<Clip>());
        group_->add(clips.back());
    }
    const auto below = clips[0]->extractIntoLayer(nullptr);
    const auto above = clips[2]->extractIntoLayer(nullptr);
    const auto wrapper = clips[1]->extractAnimationLayer();
    ASSERT_TRUE(wrapper);
    for (const bool again : {false, true}) {
        EXPECT_TRUE(wrapper->isFake());
        EXPECT_EQ(layer_->getSublayers(), (LayerList{below, wrapper, above})) << again;
        EXPECT_TRUE(clips[1]->ownsLayer());
        EXPECT_EQ(wrapper->getSublayers(), LayerList{clips[1]->getLayer()}) << again;
        EXPECT_FALSE(layer_->isValidationLocked());
        EXPECT_EQ(group_->getChildren()[2], clips[1]);
        EXPECT_EQ(clips[1]->extractAnimationLayer(), wrapper);
    }
    const auto alone = std::make_shared<Clip>();
    EXPECT_EQ(alone->extractAnimationLayer(), nullptr) << "there is no superlayer for a wrapper";
    EXPECT_TRUE(alone->ownsLayer());
}

}  // namespace
}  // namespace orvane::display::graphics
