#include <gtest/gtest.h>

#include "tests/graphics/MarkingLayer.h"
#include "tests/graphics/ModelDrawables.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;

class ClipContainerTest : public ::testing::Test {
protected:
    std::shared_ptr<LoggingClipContainer> makeClip() {
        return std::make_shared<LoggingClipContainer>("clip", log_);
    }
    std::shared_ptr<LoggingContainer> makeGroup() {
        return std::make_shared<LoggingContainer>("group", log_);
    }

    Log log_;
};

TEST_F(ClipContainerTest, FrameIsTheBoundsSeenThroughTheParentAlone) {
    const auto clip = makeClip();
    clip->setBounds({1, 2, 30, 40});
    clip->add(std::make_shared<LoggingShape>("far", log_));
    clip->getChildren().front()->setTranslate(500, 500);
    clip->setScale(7, 7);
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40)) << "neither children nor own transformation";

    auto parent = makeGroup();
    const auto grandparent = makeGroup();
    grandparent->add(parent);
    parent->add(clip);
    parent->setTranslate(100, 0);
    grandparent->setScale(2, 2);
    EXPECT_EQ(clip->getFrame(), Box(202, 4, 60, 80));

    grandparent->clear();
    parent.reset();  // the parent expires without having erased the clip
    clip->resetFrame();
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40));
}

TEST_F(ClipContainerTest, SettingTheBoundsAsksForARepaint) {
    const auto layer = std::make_shared<MarkingLayer>();
    const auto clip = makeClip();
    EXPECT_EQ(clip->getBounds(), Box());
    layer->addObject(clip);
    layer->takeMarks();
    clip->setBounds({0, 0, 5, 5});
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(clip->getFrame(), Box(0, 0, 5, 5));
    EXPECT_EQ(layer->getLayerFrame(), Box(0, 0, 5, 5));
}

TEST_F(ClipContainerTest, ExtractingWrapsTheLayerOnceInItsPlace) {
    const auto base = std::make_shared<MarkingLayer>();
    const auto root = makeGroup();
    base->addObject(root);
    std::vector<std::shared_ptr<LoggingClipContainer>> clips;
    for (int i = 0; i < 3; ++i) {
        clips.push_back(makeClip());
        clips.back()->setBounds({0, 0, 10, 10});
        root->add(clips.back());
    }
    const auto below = clips[0]->extractIntoLayer(nullptr);
    const auto above = clips[2]->extractIntoLayer(nullptr);
    ASSERT_EQ(base->getSublayers(), (LayerList{below, above}));

    const auto wrapper = clips[1]->extractAnimationLayer();
    ASSERT_TRUE(wrapper);
    EXPECT_TRUE(wrapper->isFake());
    EXPECT_EQ(base->getSublayers(), (LayerList{below, wrapper, above}));
    ASSERT_TRUE(clips[1]->ownsLayer());
    EXPECT_EQ(wrapper->getSublayers(), LayerList{clips[1]->getLayer()});
    EXPECT_TRUE(wrapper->getObjects().empty());
    EXPECT_FALSE(base->isValidationLocked());

    EXPECT_EQ(clips[1]->extractAnimationLayer(), wrapper);
    EXPECT_EQ(base->getSublayers(), (LayerList{below, wrapper, above}));
    EXPECT_EQ(wrapper->getSublayers().size(), 1U);
    EXPECT_EQ(root->getChildren()[1], clips[1]);
}

TEST_F(ClipContainerTest, ExtractingGivesNoLayerWhereNoneCanHoldTheWrapper) {
    const auto clip = makeClip();
    EXPECT_EQ(clip->extractAnimationLayer(), nullptr);
    EXPECT_TRUE(clip->ownsLayer()) << "the object has a layer of its own all the same";
    EXPECT_EQ(clip->extractAnimationLayer(), nullptr);
}

}  // namespace
}  // namespace orvane::display::graphics
