#include <gtest/gtest.h>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {
namespace {

using R = DisplayLayer::Rect;
using LayerPointer = std::shared_ptr<FakeLayer>;

class DisplayLayerTest : public testing::Test {
protected:
    void SetUp() override {
        root_->addObject(onRoot_);
        sub_->addObject(onSub_);
        root_->store(root_->getSublayers().end(), sub_);
    }
    void attach() {
        root_->setDisplay(someDisplay());
        root_->validate(false);
        clear();
    }
    void clear() {
        root_->log.clear();
        sub_->log.clear();
    }

    LayerPointer root_ = std::make_shared<FakeLayer>("root");
    LayerPointer sub_ = std::make_shared<FakeLayer>("sub");
    std::shared_ptr<Spot> onRoot_ = std::make_shared<Spot>(R(0, 0, 100, 100));
    std::shared_ptr<Spot> onSub_ = std::make_shared<Spot>(R(10, 10, 20, 20));
};

TEST_F(DisplayLayerTest, AChangeValidatesFromARootThatADisplayShows) {
    clear();
    onSub_->invalidate(true);
    EXPECT_EQ(root_->log + sub_->log, "");  // no display shows it
    EXPECT_TRUE(root_->isDirty());

    attach();
    EXPECT_FALSE(root_->isDirty());
    onSub_->invalidate(true);
    EXPECT_EQ(root_->log, "layer content ");
    EXPECT_EQ(sub_->log, "layer content ");
    root_->validate(false);
    EXPECT_EQ(sub_->log, "layer content ");  // a clean layer
    sub_->validate(true);
    EXPECT_EQ(sub_->log, "layer content layer content ");
}

TEST_F(DisplayLayerTest, ValidationIsDeferredUntilTheLastUnlock) {
    attach();
    root_->lockValidation();
    root_->lockValidation();
    onRoot_->invalidate(true);
    onSub_->invalidate(true);
    root_->unlockValidation();
    EXPECT_EQ(root_->log, "");
    root_->unlockValidation();
    EXPECT_EQ(root_->log, "layer content ");
    clear();
    root_->unlockValidation();
    EXPECT_FALSE(root_->isValidationLocked());
    EXPECT_EQ(root_->log, "");
}

TEST_F(DisplayLayerTest, AMoveForcesTheContentAndAResizeAlsoTheSublayers) {
    attach();
    onRoot_->setArea({5, 0, 100, 100});
    EXPECT_EQ(root_->log, "layer content! ");
    EXPECT_EQ(sub_->log, "");
    clear();
    onRoot_->setArea({5, 0, 200, 100});
    EXPECT_EQ(root_->log, "layer content! ");
    EXPECT_EQ(sub_->log, "layer content ");
}

TEST_F(DisplayLayerTest, AnEmptyFrameEndsValidation) {
    attach();
    const UpdateLock lock(onRoot_);
    sub_->setAffectsParentFrame(false);
    onRoot_->setArea({7, 7, 0, 0});
    clear();
    root_->validate(false);
    EXPECT_EQ(root_->log, "layer ");
    EXPECT_EQ(sub_->log, "");
    EXPECT_FALSE(root_->isDirty());
}

TEST_F(DisplayLayerTest, TheFrameIncludesTheSublayersThatAffectIt) {
    onSub_->setArea({90, 90, 50, 50});
    EXPECT_EQ(root_->getLayerFrame(), R(0, 0, 140, 140));
    sub_->setAffectsParentFrame(false);
    root_->resetLayerFrame();
    EXPECT_EQ(root_->getLayerFrame(), R(0, 0, 100, 100));
    onRoot_->setVisible(false);  // visibility does not count
    EXPECT_EQ(root_->getLayerFrame(), R(0, 0, 100, 100));
}

TEST_F(DisplayLayerTest, CoordinatesAreRelativeToTheFrame) {
    EXPECT_EQ(sub_->convertPointToScreen({1, 2}), DisplayLayer::Point(11, 12));
    EXPECT_EQ(sub_->convertPointFromScreen({11, 12}), DisplayLayer::Point(1, 2));
    EXPECT_EQ(sub_->convertRectFromScreen({20, 20, -5, -5}), R(5, 5, 5, 5));
    EXPECT_EQ(sub_->convertRectToScreen({5, 5, 1, 1}), R(15, 15, 1, 1));
}

TEST_F(DisplayLayerTest, ALayerWithoutVisibleContentIsHidden) {
    EXPECT_FALSE(root_->isHidden());
    onRoot_->setVisible(false);
    EXPECT_FALSE(root_->isHidden());  // the sublayer is visible
    onSub_->setVisible(false);
    EXPECT_TRUE(root_->isHidden());
    onSub_->setVisible(true);
    root_->setHidden(true);
    EXPECT_TRUE(root_->isHidden());
    EXPECT_TRUE(FakeLayer().isHidden());
}

TEST_F(DisplayLayerTest, AnEmptiedLayerLeavesAndMayEmptyItsSuperlayer) {
    const auto wrapper = std::make_shared<FakeLayer>("wrapper");
    const auto inner = std::make_shared<FakeLayer>("inner");
    const auto object = std::make_shared<Spot>();
    inner->addObject(object);
    wrapper->store(wrapper->getSublayers().end(), inner);
    root_->store(root_->getSublayers().end(), wrapper);

    inner->removeObject(object);
    EXPECT_EQ(inner->getSuperlayer(), nullptr);
    EXPECT_EQ(wrapper->getSuperlayer(), nullptr);
    EXPECT_EQ(object->getLayer(), nullptr);

    clear();
    root_->removeObject(onRoot_);
    EXPECT_EQ(root_->log, "-" + std::to_string(onRoot_->getId()) + " ");
    EXPECT_EQ(names(*root_), "sub ") << "a layer with sublayers stays";
}

TEST_F(DisplayLayerTest, ObjectsAreSortedByIndexAndExpiredOnesComeLast) {
    const auto parent = std::make_shared<Group>();
    const auto layer = std::make_shared<FakeLayer>();
    std::vector<std::shared_ptr<Spot>> spots;
    for (int i = 0; i < 4; ++i) {
        spots.push_back(std::make_shared<Spot>());
        parent->add(spots.back());
    }
    for (const std::size_t i : {2, 0, 3, 1}) {
        layer->addObject(spots[i]);
    }
    parent->erase(parent->getChildren().begin());  // also removes it from the layer
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(layer->getObjects()[i].lock(), spots[i + 1]);
    }
    auto dying = std::make_shared<Spot>();
    layer->addObject(dying);
    dying.reset();
    layer->addObject(std::make_shared<Spot>());
    EXPECT_TRUE(layer->getObjects().back().expired());
    layer->clearObjects();
    EXPECT_TRUE(layer->getObjects().empty());
}

TEST_F(DisplayLayerTest, TheLayersInsideAGuestComeAndGoWithIt) {
    const auto parent = std::make_shared<Group>();
    const auto guest = std::make_shared<Group>();
    const auto inside = std::make_shared<Spot>();
    inside->extractIntoLayer(std::make_shared<FakeLayer>("inside"));
    guest->add(inside);
    parent->add(guest);
    parent->add(onSub_);  // on the layer "sub"
    root_->addObject(guest);
    EXPECT_EQ(names(*root_), "inside sub ");
    root_->removeObject(guest);
    EXPECT_EQ(names(*root_), "sub ");
    EXPECT_EQ(guest->getLayer(), nullptr);
}

TEST_F(DisplayLayerTest, TheDisplayIsPassedToSublayersStoredLater) {
    attach();
    const auto late = std::make_shared<FakeLayer>("late");
    root_->store(root_->getSublayers().begin(), late);
    EXPECT_EQ(late->getDisplay(), root_->getDisplay());
    root_->erase(root_->getSublayers().begin());
    EXPECT_EQ(late->getDisplay(), nullptr);
}

TEST_F(DisplayLayerTest, OnlyAnOwnerThatIsAloneIsReported) {
    EXPECT_EQ(sub_->getOwner(), nullptr);
    onSub_->ownLayer();
    EXPECT_EQ(sub_->getOwner(), onSub_);
    sub_->addObject(std::make_shared<Spot>());
    EXPECT_EQ(sub_->getOwner(), nullptr);
}

// Where a guest or an owner that is stored between two siblings goes, and who is notified.
TEST(LayerPlacement, FollowsTheLayersOfTheNeighbors) {
    struct Row {
        const char* previous;  // the layer of the neighbor: none, or its name
        const char* next;
        bool owner;
        const char* announcedBy;  // the layer that announces the element
        const char* listedBy;     // the layer of a guest afterwards
        const char* sublayers;    // of the container's layer
    };
    const Row rows[] = {
        {"", "", false, "container", "", ""},
        {"", "", true, "", "own", "own "},
        {"", "a", false, "container", "", "a "},
        {"", "a", true, "", "own", "own a "},
        {"a", "", false, "container", "", "a "},
        {"a", "", true, "", "own", "a own "},
        {"a", "b", false, "", "", "a b "},
        {"a", "b", true, "container", "own", "a own b "},
        {"container", "container", false, "container", "container", ""},
        {"container", "container", true, "", "own", "own "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.previous) + "|" + row.next +
                     (row.owner ? " owner" : " guest"));
        const auto container = std::make_shared<Group>();
        const auto ascending = std::make_shared<FakeLayer>("container");
        ascending->addObject(container);
        const auto neighbor = [&](const std::string& name) {
            const auto spot = std::make_shared<Spot>();
            container->add(spot);
            if (name == "container") {
                ascending->addObject(spot);
            } else if (!name.empty()) {
                spot->extractIntoLayer(std::make_shared<FakeLayer>(name));
            }
        };
        neighbor(row.previous);
        neighbor(row.next);
        const auto element = std::make_shared<Spot>();
        if (row.owner) {
            element->extractIntoLayer(std::make_shared<FakeLayer>("own"));
        }
        ascending->log.clear();
        container->store(container->getChildren().begin() + 1, element);
        const std::string announcement = "+" + std::to_string(element->getId()) + " ";
        EXPECT_EQ(ascending->log, *row.announcedBy != 0 ? announcement : "");
        const auto layer = std::dynamic_pointer_cast<FakeLayer>(element->getLayer());
        EXPECT_EQ(layer ? layer->name() : "", row.listedBy);
        EXPECT_EQ(names(*ascending), row.sublayers);
        // Objects are painted in the order of their indices, also after these have changed.
        for (std::size_t i = 2; i < ascending->getObjects().size(); ++i) {
            EXPECT_LT(ascending->getObjects()[i - 1].lock()->getIndex(),
                      ascending->getObjects()[i].lock()->getIndex());
        }
    }
}

}  // namespace
}  // namespace orvane::display
