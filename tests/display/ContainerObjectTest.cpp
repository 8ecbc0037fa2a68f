#include <gtest/gtest.h>

#include "FakeLayer.h"

namespace orvane::display {
namespace {

using R = DisplayObject::Rect;
using LayerPointer = std::shared_ptr<FakeLayer>;
using Object = std::shared_ptr<DisplayObject>;

class ContainerStore : public testing::Test {
protected:
    void SetUp() override {
        layer_->addObject(root_);
        root_->store(root_->getChildren().end(), before_);
        root_->store(root_->getChildren().end(), after_);
    }

    LayerPointer give(const Object& object, const std::string& name) {
        const auto layer = std::make_shared<FakeLayer>(name);
        object->extractIntoLayer(layer);
        return layer;
    }
    // An object with a layer that is not yet in any tree.
    Object owner(const std::string& name) {
        const auto object = std::make_shared<Spot>();
        layers_.push_back(give(object, name));
        return object;
    }
    // A container with no layer of its own whose children bring two.
    Object bearer() {
        const auto group = std::make_shared<Group>();
        group->add(owner("x"));
        group->add(owner("y"));
        return group;
    }
    void storeBetween(const Object& object) {
        layer_->log.clear();
        root_->store(root_->find(after_), object);
    }
    std::string announced(const Object& object) const {
        return "+" + std::to_string(object->getId()) + " ";
    }

    LayerPointer layer_ = std::make_shared<FakeLayer>("root");
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    Object before_ = std::make_shared<Spot>();
    Object after_ = std::make_shared<Spot>();
    std::vector<LayerPointer> layers_;
};

TEST_F(ContainerStore, NextHasALayerAndPreviousNone) {
    give(after_, "after");
    const Object group = bearer();
    storeBetween(group);
    EXPECT_EQ(names(*layer_), "x y after ");
    EXPECT_EQ(layer_->log, announced(group));

    const Object own = owner("own");
    layer_->log.clear();
    root_->store(root_->find(after_), own);
    EXPECT_EQ(names(*layer_), "x y own after ");
    EXPECT_EQ(layer_->log, "");  // one with a layer is not announced
}

TEST_F(ContainerStore, NeighboursOnOneLayerTakeTheElementIn) {
    const LayerPointer shared = std::make_shared<FakeLayer>("shared");
    shared->addObject(before_);
    shared->addObject(after_);

    const Object guest = std::make_shared<Spot>();
    storeBetween(guest);
    EXPECT_EQ(guest->getLayer(), shared);

    // An owner's layer goes into their layer: at the end when nothing follows, else before that.
    storeBetween(owner("own"));
    EXPECT_EQ(names(*shared), "own ");
    root_->store(root_->find(guest), owner("earlier"));
    EXPECT_EQ(names(*shared), "earlier own ");
}

TEST_F(ContainerStore, NeighboursOnSiblingLayers) {
    give(before_, "before");
    give(after_, "after");
    const Object own = owner("own");
    storeBetween(own);
    EXPECT_EQ(names(*layer_), "before own after ");
    EXPECT_EQ(layer_->log, announced(own));  // the row that announces an owner ...
    const Object group = bearer();
    storeBetween(group);
    EXPECT_EQ(names(*layer_), "before own x y after ");
    EXPECT_EQ(layer_->log, "");  // ... and not a guest
}

TEST_F(ContainerStore, NeighboursUnderAnotherLayer) {
    // The container itself draws nowhere; its children's layers hang under one that is elsewhere.
    const auto loose = std::make_shared<Group>();
    const auto common = std::make_shared<FakeLayer>("common");
    const Object left = owner("left");
    const Object right = owner("right");
    loose->add(left);
    loose->add(right);
    common->store(common->getSublayers().end(), left->getLayer());
    common->store(common->getSublayers().end(), right->getLayer());

    const Object guest = std::make_shared<Spot>();
    loose->store(loose->find(right), guest);
    EXPECT_EQ(guest->getLayer(), common);
    loose->erase(loose->find(guest));
    const Object own = owner("own");
    loose->store(loose->find(right), own);
    EXPECT_EQ(names(*common), "left own right ");
}

TEST_F(ContainerStore, PreviousHasALayerAndNextNone) {
    give(before_, "before");
    const Object group = bearer();
    storeBetween(group);
    EXPECT_EQ(names(*layer_), "before x y ");
    EXPECT_EQ(layer_->log, announced(group));
    const Object own = owner("own");
    layer_->log.clear();
    root_->store(root_->find(before_) + 1, own);
    EXPECT_EQ(names(*layer_), "before own x y ");
    EXPECT_EQ(layer_->log, "");
}

TEST_F(ContainerStore, NeighboursWithoutLayers) {
    storeBetween(owner("own"));
    EXPECT_EQ(names(*layer_), "own ");
    const Object group = bearer();
    layer_->log.clear();
    root_->store(root_->getChildren().begin(), group);
    EXPECT_EQ(names(*layer_), "x y own ");  // before the nearest that follows
    EXPECT_EQ(layer_->log, announced(group));
    const Object last = owner("last");
    root_->store(root_->getChildren().end(), last);
    EXPECT_EQ(names(*layer_), "x y own last ");
}

TEST_F(ContainerStore, AContainerOnNoLayerChangesNone) {
    const auto loose = std::make_shared<Group>();
    const Object own = owner("own");
    EXPECT_TRUE(loose->getFrame().isEmpty());
    loose->add(own);
    EXPECT_EQ(own->getLayer()->getSuperlayer(), nullptr);
    EXPECT_EQ(loose->getFrame(), R(0, 0, 10, 10));
}

TEST_F(ContainerStore, AnOwnerKeepsItsLayerWhenItLeavesAndAGuestDoesNot) {
    const Object own = owner("own");
    storeBetween(own);
    const auto ownLayer = own->getLayer();
    root_->erase(root_->find(own));
    EXPECT_EQ(own->getLayer(), ownLayer);
    EXPECT_EQ(ownLayer->getSuperlayer(), nullptr);
    EXPECT_EQ(names(*layer_), "");
    root_->add(own);
    EXPECT_EQ(names(*layer_), "own ");

    const Object group = bearer();
    root_->add(group);
    EXPECT_EQ(names(*layer_), "own x y ");
    layer_->log.clear();
    root_->erase(root_->find(group));
    EXPECT_EQ(names(*layer_), "own ");
    EXPECT_EQ(layer_->log, "-" + std::to_string(group->getId()) + " ");
}

TEST_F(ContainerStore, ARestructuringCostsOneUpdate) {
    layer_->setDisplay(someDisplay());
    layer_->validate(false);
    layer_->log.clear();
    root_->clear();
    EXPECT_EQ(layer_->log.substr(layer_->log.find("layer")),
              "layer ");  // an empty frame: no content

    for (int i = 0; i < 3; ++i) {
        root_->add(std::make_shared<Spot>());
    }
    layer_->log.clear();
    root_->invalidate(true);
    EXPECT_EQ(layer_->log, "layer content ");
}

TEST(ContainerObject, TheFrameIsTheVisibleChildrens) {
    const auto root = std::make_shared<Group>();
    const auto hidden = std::make_shared<Spot>(R(100, 100, 5, 5));
    hidden->setVisible(false);
    root->add(hidden);
    EXPECT_EQ(root->getFrame(), R());
    root->add(std::make_shared<Spot>(R(10, 10, 0, 5)));
    root->add(std::make_shared<Spot>(R(500, 500, 0, 0)));
    EXPECT_EQ(root->getFrame(), R(10, 10, 0, 5));
    root->setScale(2, 2);  // in the children's frames already
    EXPECT_EQ(root->getFrame(), R(10, 10, 0, 5));
}

TEST(ContainerObject, TraverseIsInPreOrderAndStops) {
    const auto root = std::make_shared<Group>();
    const auto inner = std::make_shared<Group>();
    const auto a = std::make_shared<Spot>();
    const auto b = std::make_shared<Spot>();
    root->add(inner);
    inner->add(a);
    root->add(b);
    std::vector<Object> met;
    EXPECT_FALSE(root->traverse([&](const Object& object) {
        met.push_back(object);
        return false;
    }));
    EXPECT_EQ(met, (std::vector<Object>{root, inner, a, b}));
    met.clear();
    EXPECT_TRUE(root->traverse([&](const Object& object) {
        met.push_back(object);
        return object == a;
    }));
    EXPECT_EQ(met.size(), 3U);
    EXPECT_THROW(root->traverse(nullptr), std::bad_function_call);
}

}  // namespace
}  // namespace orvane::display
