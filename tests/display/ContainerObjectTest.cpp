#include <gtest/gtest.h>

#include "FakeLayer.h"

namespace orvane::display {
namespace {

using R = DisplayObject::Rect;
using LayerPointer = std::shared_ptr<FakeLayer>;
using Object = std::shared_ptr<DisplayObject>;

class ContainerStore : public testing::Test {
protected:
    ContainerStore() { build(); }

    void build() {
        layer_ = std::make_shared<FakeLayer>("root");
        root_ = std::make_shared<Group>();
        before_ = std::make_shared<Spot>();
        after_ = std::make_shared<Spot>();
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
    // Stores an object, and answers with what the layer was told of it.
    std::string store(std::ptrdiff_t place, const Object& object) {
        layer_->log.clear();
        root_->store(root_->getChildren().begin() + place, object);
        return layer_->log;
    }
    std::string announced(const Object& object) const {
        return "+" + std::to_string(object->getId()) + " ";
    }

    LayerPointer layer_;
    std::shared_ptr<Group> root_;
    Object before_, after_;
    std::vector<LayerPointer> layers_;
};

TEST_F(ContainerStore, LayersGoWhereTheirObjectsStand) {
    struct Step {
        bool
            owns;  // one with a layer of its own is stored, or a container whose children bring two
        std::ptrdiff_t place;
        bool isAnnounced;
        std::string names;
    };
    const struct {
        const char* what;
        bool beforeHasLayer, afterHasLayer;
        std::vector<Step> steps;
    } cases[] = {
        {"the next has a layer, the previous none",
         false,
         true,
         {{false, 1, true, "x y after "}, {true, 2, false, "x y own after "}}},
        {"the previous has a layer, the next none",
         true,
         false,
         {{false, 1, true, "before x y "}, {true, 1, false, "before own x y "}}},
        {"both have: here an owner is announced, and not a guest",
         true,
         true,
         {{true, 1, true, "before own after "}, {false, 2, false, "before own x y after "}}},
        {"neither has: before the nearest that follows",
         false,
         false,
         {{true, 1, false, "own "},
          {false, 0, true, "x y own "},
          {true, 4, false, "x y own own "}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        build();
        if (c.beforeHasLayer) {
            give(before_, "before");
        }
        if (c.afterHasLayer) {
            give(after_, "after");
        }
        for (const Step& step : c.steps) {
            const Object object = step.owns ? owner("own") : bearer();
            EXPECT_EQ(store(step.place, object), step.isAnnounced ? announced(object) : "");
            EXPECT_EQ(names(*layer_), step.names);
        }
    }
}

TEST_F(ContainerStore, NeighboursOnOneLayerTakeTheElementIn) {
    const LayerPointer shared = std::make_shared<FakeLayer>("shared");
    shared->addObject(before_);
    shared->addObject(after_);

    const Object guest = std::make_shared<Spot>();
    store(1, guest);
    EXPECT_EQ(guest->getLayer(), shared);

    // An owner's layer goes into their layer: at the end when nothing follows, else before that.
    store(2, owner("own"));
    EXPECT_EQ(names(*shared), "own ");
    store(1, owner("earlier"));
    EXPECT_EQ(names(*shared), "earlier own ");
}

TEST_F(ContainerStore, NeighboursUnderAnotherLayer) {
    // The container itself draws nowhere; its children's layers hang under one that is elsewhere.
    const auto loose = std::make_shared<Group>();
    const auto common = std::make_shared<FakeLayer>("common");
    const Object left = owner("left");
    const Object right = owner("right");
    loose->add(left);
    loose->add(right);
    EXPECT_EQ(left->getLayer()->getSuperlayer(), nullptr);
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

TEST_F(ContainerStore, AnOwnerKeepsItsLayerWhenItLeavesAndAGuestDoesNot) {
    const Object own = owner("own");
    store(1, own);
    const auto ownLayer = own->getLayer();
    root_->erase(root_->find(own));
    EXPECT_EQ(own->getLayer(), ownLayer);
    EXPECT_EQ(ownLayer->getSuperlayer(), nullptr);
    EXPECT_EQ(names(*layer_), "");
    root_->add(own);
    EXPECT_EQ(names(*layer_), "own ");

    const Object group = bearer();
    root_->add(group);
    layer_->log.clear();
    root_->erase(root_->find(group));
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
