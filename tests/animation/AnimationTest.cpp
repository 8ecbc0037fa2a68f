#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "orvane/orvane.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {
namespace {

using platform::CATransform3D;
using platform::CATransform3DIdentity;
using platform::CGPoint;

// A target with a given view, or without a view.
class Target : public Animatable {
public:
    explicit Target(std::shared_ptr<platform::NSView> view) : view_(std::move(view)) {}
    std::shared_ptr<platform::NSView> getAnimatableHandler() const override { return view_; }

private:
    std::shared_ptr<platform::NSView> view_;
};

// A target of 100 x 50 points at 30, 40, with a clock that moves only when the test advances it.
class AnimationTest : public testing::Test {
protected:
    AnimationTest() { view_->setFrame({{30, 40}, {100, 50}}); }
    ~AnimationTest() override {
        // No callback may reach a test that has ended.
        view_->layer()->removeAllAnimations();
        clock_.advanceBy(0);
    }

    std::shared_ptr<ValueAnimation> makeAnimation(AttributeName attribute,
                                                  const std::vector<float>& values,
                                                  const std::string& key = "key") {
        auto animation = std::make_shared<ValueAnimation>(key, attribute, values);
        animation->setAnimatable(target_);
        animation->setDuration(1);
        animation->setCompletionCallback([this, key] { log_ += key + " "; });
        return animation;
    }

    platform::CALayerPresentation shown() const {
        return view_->layer()->presentation(platform::CACurrentMediaTime());
    }
    double shownX() const { return shown().transform.affineTransform().tx; }
    // Advances the clock and returns the keys of what has completed since the last call, in order.
    std::string after(double seconds) {
        clock_.advanceBy(seconds);
        return std::exchange(log_, "");
    }

    platform::CAVirtualClock clock_{100};
    std::shared_ptr<platform::NSView> view_ = std::make_shared<platform::NSView>();
    std::shared_ptr<Target> target_ = std::make_shared<Target>(view_);
    std::string log_;  // the keys of the animations that completed, in order
};

using ValueAnimationTest = AnimationTest;

// The pictures of SceneTest show every attribute.
TEST_F(ValueAnimationTest, UsesTheCompleteKeyFramesOfAKnownAttribute) {
    const struct {
        AttributeName attribute;
        std::vector<float> values;
        platform::CGPoint shown;  // at a quarter of the duration
    } cases[] = {
        {AttributeName::Translation, {5, 6, 7}, {5, 6}},
        {AttributeName::Translation, {0, 0, 8, 6, 0, 0, 50}, {4, 3}},
        {AttributeName::Affine, {0, 0, 0, 0, 0}, {}},
        {AttributeName::Opacity, {}, {}},
        {static_cast<AttributeName>(6), {5, 6, 7}, {}},
    };
    for (const auto& [attribute, values, expected] : cases) {
        SCOPED_TRACE(getKeyPath(attribute) + " of " + std::to_string(values.size()));
        makeAnimation(attribute, values)->run();
        clock_.advanceBy(0.25);
        EXPECT_EQ(shown().transform.affineTransform(),
                  (platform::CGAffineTransform{1, 0, 0, 1, expected.x, expected.y}));
        EXPECT_EQ(after(0.7), "");
        EXPECT_EQ(after(0.05), "key ");
        EXPECT_EQ(shown().transform, CATransform3DIdentity);
    }
}

TEST_F(ValueAnimationTest, WritesTheLastTransformToTheLayerAtOnce) {
    const auto translation = makeAnimation(AttributeName::Translation, {10, 2, 20, 4});
    translation->setDelay(2);
    translation->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeTranslation(20, 4, 1));
    clock_.advanceBy(1.9);
    EXPECT_EQ(shownX(), 20) << "the layer's own value shows during the delay";
    clock_.advanceBy(0.6);
    EXPECT_NEAR(shownX(), 15, 1e-4);

    makeAnimation(AttributeName::Affine, {1, 0, 0, 1, 0, 0, 2, 0, 0, 3, 4, 5})->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeAffineTransform({2, 0, 0, 3, 4, 5}));
}

TEST_F(ValueAnimationTest, RepeatsByItsRepeatCount) {
    const struct {
        std::int32_t count;
        double end;  // seconds after the start; 0 means never
    } cases[] = {{1, 1}, {0, 1}, {3, 3}, {-7, 0}};
    for (const auto& [count, end] : cases) {
        SCOPED_TRACE(count);
        const auto animation = makeAnimation(AttributeName::TranslationX, {0, 10});
        animation->setRepeatCount(count);
        animation->run();
        EXPECT_EQ(after(end > 0 ? end - 0.5 : 1000.5), "");
        EXPECT_NEAR(shownX(), 5, 1e-6);
        EXPECT_EQ(after(0.5), end > 0 ? "key " : "");
        target_->removeAnimation("key");
        EXPECT_EQ(after(0), end > 0 ? "" : "key ") << "cancelling completes it exactly once";
    }
}

TEST_F(ValueAnimationTest, RestoresTheAnchorPointBeforeTheCallback) {
    const struct {
        bool isX;
        CGPoint position, anchorPoint;  // while it runs
        CGPoint after;                  // position at the end, moved by 1, 1 meanwhile
    } cases[] = {{true, {80, 40}, {0.5, 0}, {30, 41}}, {false, {30, 90}, {0, 1}, {31, 40}}};
    platform::CALayer& layer = *view_->layer();
    for (const auto& c : cases) {
        view_->setFrame({{30, 40}, {100, 50}});
        const auto animation = makeAnimation(AttributeName::Rotation, {0, 1});
        c.isX ? animation->setAnchorPointX(0.5F) : animation->setAnchorPointY(1);
        animation->setCompletionCallback([&] {
            log_ += "key ";
            EXPECT_EQ(layer.position(), c.after);
            EXPECT_EQ(layer.anchorPoint(), (CGPoint{0, 0}));
            EXPECT_EQ(layer.transform(), CATransform3DIdentity);
        });
        animation->run();
        EXPECT_EQ(layer.position(), c.position);
        EXPECT_EQ(layer.anchorPoint(), c.anchorPoint);
        layer.setPosition({c.position.x + 1, c.position.y + 1});
        layer.setTransform(CATransform3D::makeTranslation(7, 7, 1));
        EXPECT_EQ(after(1), "key ");
    }
}

TEST_F(ValueAnimationTest, ASecondRunReplacesTheFirstAndBothComplete) {
    // The second run saves what the first one has set. The end of the first run removes their key,
    // which ends the second run.
    const auto animation = makeAnimation(AttributeName::Rotation, {0, 1});
    animation->setAnchorPointX(0.5F);
    animation->run();
    clock_.advanceBy(0.5);
    animation->run();
    EXPECT_EQ(view_->layer()->position(), (CGPoint{130, 40}));
    EXPECT_EQ(after(0), "key ");
    EXPECT_EQ(view_->layer()->position(), (CGPoint{80, 40}));
    EXPECT_EQ(view_->layer()->anchorPoint(), (CGPoint{0.5, 0}));
    EXPECT_FALSE(view_->layer()->hasAnimations());
    EXPECT_EQ(after(0), "key ");
    EXPECT_EQ(after(5), "");
}

TEST_F(ValueAnimationTest, DoesNothingWithoutATargetOrAView) {
    const auto animation = makeAnimation(AttributeName::Opacity, {1, 0});
    for (const auto& target : {std::shared_ptr<Target>(), std::make_shared<Target>(nullptr)}) {
        animation->setAnimatable(target);
        EXPECT_EQ(animation->createNativeAnimation(), nullptr);
        animation->run();
        EXPECT_EQ(after(2), "");
    }
    animation->getAnimatable()->removeAnimation("key");  // has no effect
}

TEST_F(ValueAnimationTest, ACallbackMayReplaceItselfStartAndCancelOthersAndThrow) {
    const auto animation = makeAnimation(AttributeName::TranslationX, {0, 1});
    const auto other = makeAnimation(AttributeName::Opacity, {1, 0}, "other");
    animation->setCompletionCallback([&, own = std::string(1000, 'x')] {
        animation->setCompletionCallback({});
        log_ += own.substr(0, 1);  // its captures live until it returns
        other->run();
        target_->removeAnimation("cancelled");
        throw std::runtime_error("on purpose");
    });
    animation->run();
    makeAnimation(AttributeName::TranslationY, {0, 1}, "parallel")->run();
    makeAnimation(AttributeName::Rotation, {0, 1}, "cancelled")->run();
    EXPECT_EQ(after(1), "xparallel cancelled ");
    EXPECT_EQ(after(1), "other ");
    EXPECT_FALSE(view_->layer()->hasAnimations());
    EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
}

TEST_F(ValueAnimationTest, ARunFromItsOwnCallbackIsRemovedAtOnceAndCompletes) {
    // After the callback the key is removed, with the run that has the key by then.
    const auto animation = makeAnimation(AttributeName::Opacity, {1, 0});
    animation->setCompletionCallback([&, runs = 0]() mutable {
        log_ += "end ";
        if (++runs < 3) {
            animation->run();
        }
    });
    animation->run();
    EXPECT_EQ(after(1), "end ");
    EXPECT_FALSE(view_->layer()->hasAnimations());
    EXPECT_EQ(after(0), "end ");
    EXPECT_EQ(after(0), "end ");
    EXPECT_EQ(after(0), "");
}

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

TEST_F(GroupAnimationTest, CompletesAfterAllItsLayerAnimations) {
    add("long", 3);
    add("short", 1);
    add("late", 1)->setDelay(1.5F);
    add("cancelled", 5)->setRepeatCount(-1);
    add("replaced", 5);
    const auto frames = std::make_shared<FrameAnimation>("frames", [](float) {});
    frames->setDuration(10);
    frames->setCompletionCallback([this] { log_ += "frames "; });
    group_->add(frames);
    group_->run();
    EXPECT_EQ(after(1), "short ");
    target_->removeAnimation("cancelled");
    EXPECT_EQ(after(0), "cancelled ");
    makeAnimation(AttributeName::TranslationX, {0, 1}, "replaced")->run();
    EXPECT_EQ(after(0), "replaced ");
    EXPECT_EQ(after(0), "replaced ") << "the end of one run removes the key of the other";
    EXPECT_EQ(after(1.6), "late ");
    EXPECT_EQ(after(0.5), "long group ") << "the group does not wait for frame animations";
    EXPECT_EQ(after(10), "frames ");
}

TEST_F(GroupAnimationTest, NeedsAnimationsAndATargetThatItDoesNotPassOn) {
    group_->run();
    EXPECT_EQ(after(2), "") << "an empty group never ends";
    group_->add(nullptr);
    group_->run();
    EXPECT_EQ(after(0), "group ") << "a null pointer makes it a group that ends at once";
    EXPECT_EQ(group_->createNativeAnimation(), nullptr);

    const auto child = add("child", 1);
    child->setAnimatable(nullptr);
    group_->run();
    EXPECT_EQ(after(0), "group ") << "a child without a target does nothing, and the group ends";

    child->setAnimatable(target_);
    group_->setAnimatable(std::make_shared<Target>(nullptr));
    group_->run();
    EXPECT_FALSE(view_->layer()->hasAnimations());
    EXPECT_EQ(after(2), "");
}

TEST_F(GroupAnimationTest, GroupsNestAndCloseTheirTransactionsWhenAChildThrows) {
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

    // This endless run would keep the groups from completing if their transactions were open.
    const auto later = makeAnimation(AttributeName::TranslationX, {0, 1}, "later");
    later->setRepeatCount(-1);
    later->run();
    EXPECT_EQ(after(1), "inside group outer ");
}

}  // namespace
}  // namespace orvane::display::animation
