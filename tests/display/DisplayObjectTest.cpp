#include <gtest/gtest.h>

#include "FakeLayer.h"
#include "orvane/display/AccessibilityElement.h"

namespace orvane::display {
namespace {

using geometry::Matrix;
using Object = std::shared_ptr<DisplayObject>;
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

    // The full transformation starts at the root.
    const auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root->setScale(2, 2);
    leaf->setTranslate(5, 0);
    EXPECT_EQ(leaf->applyTransformToRect({0, 0, 1, 1}), R(10, 0, 2, 2));
    EXPECT_EQ(Spot(R(100, 200, 10, 10)).convertRectToFrame({5, 5, -3, -4}), R(102, 201, 3, 4))
        << "relative to the frame, and normalised";
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

    const auto hidden = std::make_shared<Spot>(R(50, 50, 10, 10));
    root->add(hidden);
    hidden->setVisible(false);
    EXPECT_EQ(root->getFrame(), R(0, 0, 20, 10));
    hidden->setVisible(true);
    EXPECT_EQ(root->getFrame(), R(0, 0, 60, 60)) << "shown later it widens its parent";
    root->setVisible(false);
    EXPECT_FALSE(leaf->isVisible()) << "visibility is the whole chain's";
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

TEST(DisplayNode, NeighboursPathsAndAncestors) {
    const auto root = std::make_shared<Group>();
    const auto left = std::make_shared<Group>();
    const auto right = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    const auto alone = std::make_shared<Spot>();
    root->add(left);
    root->add(right);
    left->add(leaf);

    EXPECT_EQ(left->next(), right);
    EXPECT_EQ(right->prev(), left);
    EXPECT_EQ(right->next(), nullptr);
    EXPECT_EQ(alone->next(), nullptr);
    EXPECT_EQ(alone->prev(), nullptr);
    EXPECT_EQ(leaf->findChildOf(root), left);
    EXPECT_EQ(leaf->findChildOf(left), leaf);
    EXPECT_EQ(leaf->findChildOf(right), nullptr);
    EXPECT_EQ(alone->findChildOf(root), nullptr);
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, right), Object(root));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, left), Object(left));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, leaf), Object(leaf));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, alone), nullptr);
    EXPECT_EQ(leaf->getPathToRoot().front(), Object(root));
    const auto path = alone->getPathToRoot();
    EXPECT_EQ(std::distance(path.begin(), path.end()), 1);
    alone->removeFromParent();
}

TEST(DisplayNode, OnlyItsOwnChildrenAreFoundAndErased) {
    const auto root = std::make_shared<Group>();
    const Object spot = std::make_shared<Spot>();
    root->add(std::make_shared<Spot>());
    root->add(spot);
    EXPECT_EQ(root->find(spot), root->getChildren().begin() + 1);
    root->erase(root->find(spot));
    EXPECT_EQ(root->find(spot), root->getChildren().end());

    // An index in range is not enough: the element must be this container's.
    const auto other = std::make_shared<Group>();
    other->add(spot);
    EXPECT_EQ(root->find(spot), root->getChildren().end());
    EXPECT_EQ(root->erase(root->find(spot)), root->getChildren().end());
    EXPECT_EQ(root->getChildren().size(), 1U);
}

TEST(DisplayNode, WhatCannotGoIntoATreeIsRefused) {
    const auto root = std::make_shared<Group>();
    const auto inner = std::make_shared<Group>();
    root->add(inner);
    testing::internal::CaptureStderr();
    root->add(nullptr);
    root->add(root);
    inner->add(root);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
    EXPECT_EQ(root->getChildren().size(), 1U);
    EXPECT_TRUE(inner->getChildren().empty());
}

TEST(DisplayNode, AChildOutlivesItsParent) {
    auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root.reset();
    EXPECT_EQ(leaf->getParent(), nullptr);
    EXPECT_TRUE(leaf->isVisible());
    leaf->invalidate(true);
}

TEST(DisplayNode, AVeryDeepTreeIsBuiltMeasuredTouchedAndDestroyed) {
    constexpr int kLevels = 10000;
    const auto layer = std::make_shared<FakeLayer>();
    auto root = std::make_shared<Group>();
    layer->setDisplay(someDisplay());
    layer->addObject(root);
    std::shared_ptr<ContainerObject> deepest = root;
    {
        const UpdateLock lock(root);
        for (int i = 0; i < kLevels; ++i) {
            const auto level = std::make_shared<Group>();
            deepest->add(level);
            deepest = level;
        }
        deepest->add(std::make_shared<Spot>(Spot::Rect(3, 4, 5, 6)));
    }
    EXPECT_EQ(root->getFrame(), DisplayObject::Rect(3, 4, 5, 6));
    int met = 0;
    root->traverse([&](const Object&) { return ++met < 0; });
    EXPECT_EQ(met, kLevels + 2);
    root->validate({0, 0, 10, 10});
    root->invalidate(true);
    layer->removeObject(root);
    std::weak_ptr<ContainerObject> ghost = deepest;
    deepest.reset();
    root.reset();
    EXPECT_TRUE(ghost.expired());
}

}  // namespace
}  // namespace orvane::display
