#include <gtest/gtest.h>

#include "FakeLayer.h"

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

    LayerPointer root_ = std::make_shared<FakeLayer>();
    LayerPointer sub_ = std::make_shared<FakeLayer>();
    std::shared_ptr<Spot> onRoot_ = std::make_shared<Spot>(R(0, 0, 100, 100));
    std::shared_ptr<Spot> onSub_ = std::make_shared<Spot>(R(10, 10, 20, 20));
};

TEST_F(DisplayLayerTest, AChangeValidatesFromARootThatIsShown) {
    clear();
    onSub_->invalidate(true);
    EXPECT_EQ(root_->log + sub_->log, "");  // nobody shows it
    EXPECT_TRUE(root_->isDirty());

    attach();
    EXPECT_FALSE(root_->isDirty());
    onSub_->invalidate(true);
    EXPECT_EQ(root_->log, "layer content ");
    EXPECT_EQ(sub_->log, "layer content ");
    root_->validate(false);
    EXPECT_EQ(sub_->log, "layer content ");  // clean: nothing
    sub_->validate(true);
    EXPECT_EQ(sub_->log, "layer content layer content ");
}

TEST_F(DisplayLayerTest, LocksHoldValidationBackUntilTheLastIsGone) {
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

TEST_F(DisplayLayerTest, ALayerIsHiddenWhenNothingOnItCanBeSeen) {
    EXPECT_FALSE(root_->isHidden());
    onRoot_->setVisible(false);
    EXPECT_FALSE(root_->isHidden());  // the sublayer still shows
    onSub_->setVisible(false);
    EXPECT_TRUE(root_->isHidden());
    onSub_->setVisible(true);
    root_->setHidden(true);
    EXPECT_TRUE(root_->isHidden());
    EXPECT_TRUE(FakeLayer().isHidden());
}

TEST_F(DisplayLayerTest, AnEmptiedLayerLeavesAndTheCollapseGoesUp) {
    const auto wrapper = std::make_shared<FakeLayer>();
    const auto inner = std::make_shared<FakeLayer>();
    const auto object = std::make_shared<Spot>();
    inner->addObject(object);
    wrapper->store(wrapper->getSublayers().end(), inner);
    root_->store(root_->getSublayers().end(), wrapper);

    inner->removeObject(object);
    EXPECT_EQ(inner->getSuperlayer(), nullptr);
    EXPECT_EQ(wrapper->getSuperlayer(), nullptr);
    EXPECT_EQ(object->getLayer(), nullptr);

    root_->removeObject(onRoot_);
    EXPECT_EQ(sub_->getSuperlayer(), root_) << "a layer with sublayers stays";
}

TEST_F(DisplayLayerTest, ObjectsAreSortedByIndexAndTheDeadComeLast) {
    const auto parent = std::make_shared<Group>();
    std::vector<std::shared_ptr<Spot>> spots;
    for (int i = 0; i < 4; ++i) {
        spots.push_back(std::make_shared<Spot>());
        parent->add(spots.back());
    }
    const auto layer = std::make_shared<FakeLayer>();
    for (const int i : {2, 0, 3, 1}) {
        layer->addObject(spots[static_cast<std::size_t>(i)]);
    }
    parent->erase(parent->getChildren().begin());  // takes the first off the layer, too
    spots[0].reset();
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

}  // namespace
}  // namespace orvane::display
