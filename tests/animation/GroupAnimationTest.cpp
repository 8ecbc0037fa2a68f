#include "orvane/display/animation/GroupAnimation.h"

#include "orvane/display/animation/FrameAnimation.h"
#include "tests/animation/AnimationFixture.h"

namespace orvane::display::animation {

class GroupAnimationTest : public AnimationTest {
protected:
    GroupAnimationTest() {
        group_->setAnimatable(target_);
        group_->setCompletionCallback([this] { log_ += "group "; });
    }

    std::shared_ptr<ValueAnimation> add(const std::string& key, float duration) {
        const auto animation = makeAnimation(AttributeName::Opacity, {1, 0}, key);
        animation->setDuration(duration);
        group_->add(animation);
        return animation;
    }

    std::shared_ptr<GroupAnimation> group_ = std::make_shared<GroupAnimation>("group");
};

TEST_F(GroupAnimationTest, CompletesAfterAllThatAnimateALayer) {
    add("long", 3);
    add("short", 1);
    add("late", 1)->setDelay(1.5F);
    group_->run();
    clock_.advanceBy(1);
    EXPECT_EQ(log_, "short ");
    clock_.advanceBy(1.6);
    EXPECT_EQ(log_, "short late ");
    clock_.advanceBy(0.5);
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "short late long group ");
    clock_.advanceBy(10);
    EXPECT_EQ(log_, "short late long group ");
}

TEST_F(GroupAnimationTest, NeedsATargetAndGivesItToNobody) {
    const auto child = add("child", 1);
    child->setAnimatable(nullptr);
    group_->run();
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "group ") << "a child without a target does nothing, and the group ends";

    log_.clear();
    child->setAnimatable(target_);
    for (const auto& target : {std::shared_ptr<Target>(), std::make_shared<Target>(nullptr)}) {
        group_->setAnimatable(target);
        group_->run();
        clock_.advanceBy(2);
        EXPECT_EQ(log_, "");
        EXPECT_FALSE(view_->layer()->hasAnimations());
    }
}

TEST_F(GroupAnimationTest, NeverCompletesWhenEmpty) {
    group_->add(nullptr);
    group_->run();
    clock_.advanceBy(2);
    EXPECT_EQ(log_, "");
    EXPECT_EQ(group_->createNativeAnimation(), nullptr);
}

TEST_F(GroupAnimationTest, EndsWhenItsLastAnimationIsCancelledOrReplaced) {
    add("cancelled", 5)->setRepeatCount(-1);
    add("replaced", 5);
    group_->run();
    target_->removeAnimation("cancelled");
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "cancelled ");
    makeAnimation(AttributeName::TranslationX, {0, 1}, "replaced")->run();
    clock_.advanceBy(0);
    clock_.advanceBy(0);
    EXPECT_EQ(log_.substr(0, 25), "cancelled replaced group ");
}

TEST_F(GroupAnimationTest, DoesNotWaitForAFrameAnimation) {
    const auto frames = std::make_shared<FrameAnimation>("frames", [](float) {});
    frames->setDuration(10);
    frames->setCompletionCallback([this] { log_ += "frames "; });
    group_->add(frames);
    add("value", 1);
    group_->run();
    clock_.advanceBy(0);
    clock_.advanceBy(1);
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "value group ");
    clock_.advanceBy(10);
    EXPECT_EQ(log_, "value group frames ");
}

TEST_F(GroupAnimationTest, GroupsNestAndTheTransactionIsClosedWhateverAChildDoes) {
    class Failing : public Animation {
    public:
        Failing() : Animation("failing") {}
        void run() override { throw std::runtime_error("on purpose"); }
        std::shared_ptr<platform::CAAnimation> createNativeAnimation() override { return nullptr; }
    };
    add("inside", 1);
    const auto outer = std::make_shared<GroupAnimation>("outer");
    outer->setAnimatable(target_);
    outer->setCompletionCallback([this] { log_ += "outer "; });
    outer->add(group_);
    outer->add(std::make_shared<Failing>());
    EXPECT_THROW(outer->run(), std::runtime_error);

    // Would keep the groups open if their transactions still were.
    const auto later = makeAnimation(AttributeName::TranslationX, {0, 1}, "later");
    later->setRepeatCount(-1);
    later->run();
    for (int i = 0; i < 3; ++i) {
        clock_.advanceBy(1);
    }
    EXPECT_EQ(log_, "inside group outer ");
}

}  // namespace orvane::display::animation
