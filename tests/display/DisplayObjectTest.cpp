#include <gtest/gtest.h>

#include "FakeLayer.h"
#include "orvane/display/AccessibilityElement.h"

namespace orvane::display {
namespace {

using geometry::Matrix;
using R = DisplayObject::Rect;

TEST(DisplayObject, TransformationsComposeOrReplace) {
    Spot spot;
    spot.translate(10, 20);
    spot.scale(2, 3);
    EXPECT_EQ(spot.getTransformation(), Matrix(2, 0, 10, 0, 3, 20));
    spot.setScale(4, 5);
    EXPECT_EQ(spot.getTransformation(), Matrix(4, 0, 0, 0, 5, 0));
    spot.applyMatrix(1, 0, 1, 0, 1, 1);
    EXPECT_EQ(spot.getTransformation(), Matrix(4, 0, 4, 0, 5, 5));
    spot.setMatrix(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(spot.getTransformation(), Matrix(1, 2, 3, 4, 5, 6));
}

TEST(DisplayObject, TheFullTransformationStartsAtTheRoot) {
    const auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root->setScale(2, 2);
    leaf->setTranslate(5, 0);
    EXPECT_EQ(leaf->applyTransformToRect({0, 0, 1, 1}), R(10, 0, 2, 2));
}

TEST(DisplayObject, AFrameIsForgottenUpwardUntilOneThatIsForgotten) {
    const auto root = std::make_shared<Group>();
    const auto middle = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(middle);
    middle->add(leaf);
    EXPECT_EQ(root->getFrame(), R(0, 0, 10, 10));
    leaf->setArea({0, 0, 20, 10});
    EXPECT_EQ(root->getFrame(), R(0, 0, 20, 10));
}

TEST(DisplayObject, AHiddenObjectShownLaterWidensItsParent) {
    const auto root = std::make_shared<Group>();
    const auto hidden = std::make_shared<Spot>(R(50, 50, 10, 10));
    root->add(std::make_shared<Spot>());
    root->add(hidden);
    hidden->setVisible(false);
    EXPECT_EQ(root->getFrame(), R(0, 0, 10, 10));
    hidden->setVisible(true);
    EXPECT_EQ(root->getFrame(), R(0, 0, 60, 60));
}

TEST(DisplayObject, RectanglesRelativeToTheFrameComeBackNormalised) {
    Spot spot(R(100, 200, 10, 10));
    EXPECT_EQ(spot.convertRectToFrame({5, 5, -3, -4}), R(102, 201, 3, 4));
}

TEST(DisplayObject, VisibilityIsTheWholeChains) {
    const auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root->setVisible(false);
    EXPECT_FALSE(leaf->isVisible());
    root->setVisible(true);
    EXPECT_TRUE(leaf->isVisible());
}

TEST(DisplayObject, OnlyAChangeOfVisibilityInvalidates) {
    const auto layer = std::make_shared<FakeLayer>();
    layer->setDisplay(someDisplay());
    const auto spot = std::make_shared<Spot>();
    layer->addObject(spot);
    layer->validate(false);
    layer->log.clear();
    spot->setVisible(true);
    EXPECT_EQ(layer->log, "");
    spot->setVisible(false);
    EXPECT_EQ(layer->log, "layer content ");
}

TEST(DisplayObject, ExtractingKeepsThePlaceAndIsDoneOnce) {
    const auto root = std::make_shared<Group>();
    const auto layer = std::make_shared<FakeLayer>();
    layer->addObject(root);
    std::vector<std::shared_ptr<Spot>> spots;
    for (int i = 0; i < 3; ++i) {
        spots.push_back(std::make_shared<Spot>());
        root->add(spots.back());
    }
    const auto own = spots[1]->extractAnimationLayer();
    EXPECT_EQ(spots[1]->getIndex(), 1U);
    EXPECT_EQ(own->getSuperlayer(), layer);
    EXPECT_TRUE(spots[1]->ownsLayer());
    EXPECT_EQ(spots[1]->extractIntoLayer(std::make_shared<FakeLayer>()), own);

    spots[1]->setLayer(nullptr);
    EXPECT_FALSE(spots[1]->ownsLayer());
}

TEST(DisplayObject, TheNearestSublayerIsSoughtAmongSiblingsAndThenAncestors) {
    const auto layer = std::make_shared<FakeLayer>();
    const auto root = std::make_shared<Group>();
    const auto group = std::make_shared<Group>();
    const auto inGroup = std::make_shared<Spot>();
    const auto owner = std::make_shared<Spot>();
    const auto plain = std::make_shared<Spot>();
    layer->addObject(root);
    root->add(group);
    group->add(inGroup);
    root->add(plain);
    root->add(owner);
    const auto ownerLayer = owner->extractIntoLayer(std::make_shared<FakeLayer>("owner"));

    using enum SearchDirection;
    EXPECT_EQ(inGroup->findNearestSublayer(Forward, false), nullptr);
    EXPECT_EQ(inGroup->findNearestSublayer(Forward, true), ownerLayer);
    EXPECT_EQ(plain->findNearestSublayer(Forward, false), ownerLayer);
    EXPECT_EQ(plain->findNearestSublayer(Backward, true), nullptr);
    EXPECT_EQ(group->findNearestSublayer(Forward, false), ownerLayer);
    EXPECT_EQ(inGroup->findNextInPreOrderTraversal(), plain);
}

TEST(DisplayObject, AnAccessibilityElementIsMadeOnDemandAndKept) {
    Spot spot;
    EXPECT_EQ(spot.getAccessibilityElement(), nullptr);
    spot.getOrCreateAccessibilityElement()->setLabel("close");
    EXPECT_EQ(spot.getOrCreateAccessibilityElement()->getLabel(), "close");
}

}  // namespace
}  // namespace orvane::display
