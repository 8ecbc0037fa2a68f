#include <gtest/gtest.h>

#include "FakeLayer.h"

namespace orvane::display {
namespace {

using Object = std::shared_ptr<DisplayObject>;

TEST(DisplayNode, ALoneNodeHasNoNeighbours) {
    const auto node = std::make_shared<Spot>();
    EXPECT_EQ(node->next(), nullptr);
    EXPECT_EQ(node->prev(), nullptr);
    EXPECT_EQ(node->findChildOf(std::make_shared<Group>()), nullptr);
    node->removeFromParent();
    const auto path = node->getPathToRoot();
    EXPECT_EQ(std::distance(path.begin(), path.end()), 1);
}

TEST(DisplayNode, NeighboursPathsAndAncestors) {
    const auto root = std::make_shared<Group>();
    const auto left = std::make_shared<Group>();
    const auto right = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(left);
    root->add(right);
    left->add(leaf);

    EXPECT_EQ(left->next(), right);
    EXPECT_EQ(right->prev(), left);
    EXPECT_EQ(right->next(), nullptr);
    EXPECT_EQ(leaf->findChildOf(root), left);
    EXPECT_EQ(leaf->findChildOf(left), leaf);
    EXPECT_EQ(leaf->findChildOf(right), nullptr);
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, right), Object(root));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, left), Object(left));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, leaf), Object(leaf));
    EXPECT_EQ(DisplayObject::findCommonParent(leaf, std::make_shared<Spot>()), nullptr);

    const auto path = leaf->getPathToRoot();
    EXPECT_EQ(path.front(), Object(root));
}

TEST(DisplayNode, IndicesFollowStoreAndErase) {
    const auto root = std::make_shared<Group>();
    std::vector<Object> spots;
    for (int i = 0; i < 4; ++i) {
        spots.push_back(std::make_shared<Spot>());
        root->store(root->getChildren().begin(), spots.back());
    }
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(spots[i]->getIndex(), 3 - i);
        EXPECT_EQ(root->find(spots[i]) - root->getChildren().begin(),
                  static_cast<std::ptrdiff_t>(3 - i));
    }
    root->erase(root->find(spots[2]));
    EXPECT_EQ(spots[2]->getIndex(), 0U);
    EXPECT_EQ(spots[2]->getParent(), nullptr);
    EXPECT_EQ(root->find(spots[2]), root->getChildren().end());
    EXPECT_EQ(spots[0]->getIndex(), 2U);

    // An index in range is not enough: the element must be this container's.
    const auto other = std::make_shared<Group>();
    other->add(spots[2]);
    EXPECT_EQ(root->find(spots[2]), root->getChildren().end());
    EXPECT_EQ(root->erase(root->find(spots[2])), root->getChildren().end());
    EXPECT_EQ(root->getChildren().size(), 3U);
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
