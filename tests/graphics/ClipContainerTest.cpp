#include <gtest/gtest.h>

#include "tests/graphics/MarkingLayer.h"
#include "tests/graphics/ModelDrawables.h"

namespace orvane::display::graphics {
namespace {

using Clip = Logging<ClipContainer>;
using Group = Logging<Container>;

TEST(ClipContainer, FrameIsTheBoundsSeenThroughTheParentAlone) {
    Log log;
    const auto clip = std::make_shared<Clip>("clip", log);
    const auto layer = std::make_shared<MarkingLayer>();
    layer->addObject(clip);
    EXPECT_EQ(layer->getLayerFrame(), Box());
    layer->takeMarks();
    clip->setBounds({1, 2, 30, 40});
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(layer->getLayerFrame(), Box(1, 2, 30, 40));
    clip->add(std::make_shared<LoggingShape>("far", log));
    clip->getChildren().front()->setTranslate(500, 500);
    clip->setScale(7, 7);
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40)) << "neither children nor own transformation";

    auto parent = std::make_shared<Group>("parent", log);
    const auto root = std::make_shared<Group>("root", log);
    root->add(parent);
    parent->add(clip);
    parent->setTranslate(100, 0);
    root->setScale(2, 2);
    EXPECT_EQ(clip->getFrame(), Box(202, 4, 60, 80));

    root->clear();
    parent.reset();  // it expires without having erased the clip
    clip->resetFrame();
    EXPECT_EQ(clip->getFrame(), Box(1, 2, 30, 40));
}

TEST(ClipContainer, ExtractingWrapsTheLayerOnceInItsPlace) {
    Log log;
    const auto base = std::make_shared<MarkingLayer>();
    const auto root = std::make_shared<Group>("root", log);
    base->addObject(root);
    std::vector<std::shared_ptr<Clip>> clips;
    for (int i = 0; i < 3; ++i) {
        clips.push_back(std::make_shared<Clip>("clip", log));
        root->add(clips.back());
    }
    const auto below = clips[0]->extractIntoLayer(nullptr);
    const auto above = clips[2]->extractIntoLayer(nullptr);

    const auto wrapper = clips[1]->extractAnimationLayer();
    ASSERT_TRUE(wrapper);
    for (const bool again : {false, true}) {
        EXPECT_TRUE(wrapper->isFake());
        EXPECT_EQ(base->getSublayers(), (LayerList{below, wrapper, above})) << again;
        EXPECT_TRUE(clips[1]->ownsLayer());
        EXPECT_EQ(wrapper->getSublayers(), LayerList{clips[1]->getLayer()}) << again;
        EXPECT_FALSE(base->isValidationLocked());
        EXPECT_EQ(root->getChildren()[1], clips[1]);
        EXPECT_EQ(clips[1]->extractAnimationLayer(), wrapper);
    }

    const auto alone = std::make_shared<Clip>("alone", log);
    EXPECT_EQ(alone->extractAnimationLayer(), nullptr) << "nothing there can hold a wrapper";
    EXPECT_TRUE(alone->ownsLayer());
}

}  // namespace
}  // namespace orvane::display::graphics
