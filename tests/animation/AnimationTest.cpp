#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

#include "orvane/display/animation/Animatable.h"
#include "orvane/display/animation/FrameAnimation.h"
#include "orvane/display/animation/GroupAnimation.h"
#include "orvane/display/animation/ValueAnimation.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
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
        // No callback may reach a test that has ended. The end of an animation can end another one
        // with the same key, so the clock advances twice.
        view_->layer()->removeAllAnimations();
        clock_.advanceBy(0);
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
    platform::CGAffineTransform shownTransform() const {
        return shown().transform.affineTransform();
    }

    platform::CAVirtualClock clock_{100};
    std::shared_ptr<platform::NSView> view_ = std::make_shared<platform::NSView>();
    std::shared_ptr<Target> target_ = std::make_shared<Target>(view_);
    std::string log_;  // the keys of the animations that completed, in order
};

using ValueAnimationTest = AnimationTest;

TEST_F(ValueAnimationTest, AnimatesEachAttributeThroughItsKeyFrames) {
    constexpr float quarter = std::numbers::pi_v<float> / 2;
    struct Case {
        AttributeName attribute;
        std::vector<float> values;  // the expectations hold at a quarter of the duration
        platform::CGAffineTransform transform;
        double opacity = 1;
    };
    const float s = std::sqrt(0.5F);
    const Case cases[] = {
        {AttributeName::TranslationX, {0, 8, 100}, {1, 0, 0, 1, 4, 0}},
        {AttributeName::TranslationY, {0, 8, 100}, {1, 0, 0, 1, 0, 4}},
        {AttributeName::Opacity, {1, 0.5F, 0}, {}, 0.75},
        {AttributeName::Translation, {0, 0, 8, 6, 100, 100}, {1, 0, 0, 1, 4, 3}},
        {AttributeName::Rotation, {0, quarter, 0}, {s, s, -s, s, 0, 0}},
        // Matrices of a quarter turn are interpolated as a rotation, without shrinking.
        {AttributeName::Affine,
         {1, 0, 0, 1, 0, 0, 0, 1, -1, 0, 0, 0, 1, 0, 0, 1, 0, 0},
         {s, s, -s, s, 0, 0}},
        // One key frame and an incomplete second one.
        {AttributeName::Translation, {5, 6, 7}, {1, 0, 0, 1, 5, 6}},
        // Seven numbers make three key frames.
        {AttributeName::Translation, {0, 0, 8, 6, 0, 0, 50}, {1, 0, 0, 1, 4, 3}},
        // No complete key frame, or no attribute.
        {AttributeName::Affine, {0, 0, 0, 0, 0}, {}},
        {AttributeName::Opacity, {}, {}},
        {static_cast<AttributeName>(6), {5, 6, 7}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(getKeyPath(c.attribute) + " of " + std::to_string(c.values.size()));
        log_.clear();
        makeAnimation(c.attribute, c.values)->run();
        clock_.advanceBy(0.25);
        const platform::CGAffineTransform transform = shownTransform();
        EXPECT_NEAR(transform.a, c.transform.a, 1e-6);
        EXPECT_NEAR(transform.b, c.transform.b, 1e-6);
        EXPECT_NEAR(transform.c, c.transform.c, 1e-6);
        EXPECT_NEAR(transform.d, c.transform.d, 1e-6);
        EXPECT_NEAR(transform.tx, c.transform.tx, 1e-6);
        EXPECT_NEAR(transform.ty, c.transform.ty, 1e-6);
        EXPECT_NEAR(shown().opacity, c.opacity, 1e-6);
        clock_.advanceBy(0.7);
        EXPECT_EQ(log_, "");
        clock_.advanceBy(0.05);
        EXPECT_EQ(log_, "key ");
        EXPECT_EQ(shown().transform, CATransform3DIdentity);
    }
}

TEST_F(ValueAnimationTest, WritesTheLastTransformToTheLayerAtOnce) {
    const auto translation = makeAnimation(AttributeName::Translation, {10, 2, 20, 4});
    translation->setDelay(2);
    translation->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeTranslation(20, 4, 1));
    clock_.advanceBy(1.9);
    EXPECT_EQ(shownTransform().tx, 20) << "the layer's own value shows during the delay";
    clock_.advanceBy(0.6);
    EXPECT_NEAR(shownTransform().tx, 15, 1e-4);

    makeAnimation(AttributeName::Affine, {1, 0, 0, 1, 0, 0, 2, 0, 0, 3, 4, 5})->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeAffineTransform({2, 0, 0, 3, 4, 5}));

    view_->layer()->setTransform(CATransform3DIdentity);
    makeAnimation(AttributeName::Rotation, {1, 2})->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
}

TEST_F(ValueAnimationTest, RepeatsByItsRepeatCount) {
    struct Case {
        std::int32_t count;
        double end;  // seconds after the start; 0 means never
    };
    for (const auto& [count, end] : {Case{1, 1}, {0, 1}, {3, 3}, {-1, 0}, {-7, 0}}) {
        SCOPED_TRACE(count);
        log_.clear();
        const auto animation = makeAnimation(AttributeName::TranslationX, {0, 10});
        animation->setRepeatCount(count);
        animation->run();
        clock_.advanceBy(end > 0 ? end - 0.5 : 1000.5);
        EXPECT_NEAR(shownTransform().tx, 5, 1e-6);
        EXPECT_EQ(log_, "");
        clock_.advanceBy(0.5);
        EXPECT_EQ(log_, end > 0 ? "key " : "");
        target_->removeAnimation("key");
        clock_.advanceBy(0);
        EXPECT_EQ(log_, "key ") << "cancelling completes it exactly once";
    }
}

TEST_F(ValueAnimationTest, RestoresTheAnchorPointBeforeTheCallback) {
    struct Case {
        bool x, y;
        CGPoint position, anchorPoint;  // while it runs
        CGPoint after;                  // position at the end, moved by 1, 1 meanwhile
    };
    for (const Case& c : {Case{true, true, {80, 90}, {0.5, 1}, {30, 40}},
                          Case{true, false, {80, 40}, {0.5, 0}, {30, 41}},
                          Case{false, true, {30, 90}, {0, 1}, {31, 40}},
                          Case{false, false, {30, 40}, {0, 0}, {31, 41}}}) {
        SCOPED_TRACE(testing::Message() << "anchor x " << c.x << ", y " << c.y);
        view_->setFrame({{30, 40}, {100, 50}});
        const auto animation = makeAnimation(AttributeName::Rotation, {0, 1});
        if (c.x) {
            animation->setAnchorPointX(0.5F);
        }
        if (c.y) {
            animation->setAnchorPointY(1);
        }
        bool called = false;
        animation->setCompletionCallback([&] {
            called = true;
            EXPECT_EQ(view_->layer()->position(), c.after);
            EXPECT_EQ(view_->layer()->anchorPoint(), (CGPoint{0, 0}));
            EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
        });
        animation->run();
        EXPECT_EQ(view_->layer()->position(), c.position);
        EXPECT_EQ(view_->layer()->anchorPoint(), c.anchorPoint);
        // The layer keeps its place; it rotates about the anchor point.
        const auto place = view_->layer()->affineTransform(shown());
        EXPECT_NEAR(place.tx, 30, 1e-9);
        EXPECT_NEAR(place.ty, 40, 1e-9);

        view_->layer()->setPosition({c.position.x + 1, c.position.y + 1});
        view_->layer()->setTransform(CATransform3D::makeTranslation(7, 7, 1));
        clock_.advanceBy(1);
        EXPECT_TRUE(called);
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
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "key ");
    EXPECT_EQ(view_->layer()->position(), (CGPoint{80, 40}));
    EXPECT_EQ(view_->layer()->anchorPoint(), (CGPoint{0.5, 0}));
    EXPECT_FALSE(view_->layer()->hasAnimations());
    clock_.advanceBy(0);
    clock_.advanceBy(5);
    EXPECT_EQ(log_, "key key ");
}

TEST_F(ValueAnimationTest, DoesNothingWithoutATargetOrAView) {
    const auto animation = makeAnimation(AttributeName::Opacity, {1, 0});
    const std::shared_ptr<Animatable> targets[] = {nullptr, std::make_shared<Target>(nullptr)};
    for (const std::shared_ptr<Animatable>& target : targets) {
        animation->setAnimatable(target);
        EXPECT_EQ(animation->createNativeAnimation(), nullptr);
        animation->run();
        clock_.advanceBy(2);
        EXPECT_EQ(log_, "");
    }
    targets[1]->removeAnimation("key");  // has no effect
    target_->removeAnimation("unknown");
}

TEST_F(ValueAnimationTest, ACallbackMayDoAnything) {
    const auto other = makeAnimation(AttributeName::Opacity, {1, 0}, "other");
    struct Case {
        const char* what;
        std::function<void(ValueAnimation&)> callback;
        const char* log;
    };
    const Case cases[] = {
        {"starts another", [&](ValueAnimation&) { other->run(); }, "parallel other "},
        {"sets another callback in its own place",
         [&](ValueAnimation& animation) { animation.setCompletionCallback({}); }, "parallel "},
        {"cancels", [&](ValueAnimation&) { target_->removeAnimation("parallel"); }, "parallel "},
        {"throws", [](ValueAnimation&) { throw std::runtime_error("on purpose"); }, "parallel "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        log_.clear();
        const auto animation = makeAnimation(AttributeName::TranslationX, {0, 1}, "first");
        std::size_t calls = 0;
        // The callback uses its captures after it was replaced.
        animation->setCompletionCallback([&, keep = std::string(1000, 'x'), raw = animation.get()] {
            c.callback(*raw);
            calls += keep.size() / 1000;
        });
        animation->run();
        makeAnimation(AttributeName::TranslationY, {0, 1}, "parallel")->run();
        for (int i = 0; i < 5; ++i) {
            clock_.advanceBy(1);
        }
        EXPECT_EQ(log_, c.log);
        EXPECT_EQ(calls, std::string(c.what) == "throws" ? 0U : 1U);
        EXPECT_FALSE(view_->layer()->hasAnimations());
        EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
    }
}

TEST_F(ValueAnimationTest, ARunFromItsOwnCallbackIsRemovedAtOnceAndCompletes) {
    // After the callback the key is removed, with the run that has the key by then.
    const auto animation = makeAnimation(AttributeName::Opacity, {1, 0});
    animation->setCompletionCallback([this, weak = std::weak_ptr(animation)] {
        log_ += "end ";
        if (log_.size() < 12) {
            weak.lock()->run();
        }
    });
    animation->run();
    clock_.advanceBy(1);
    EXPECT_FALSE(view_->layer()->hasAnimations());
    for (int i = 0; i < 5; ++i) {
        clock_.advanceBy(0);
    }
    EXPECT_EQ(log_, "end end end ");
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
    // Advances the clock and returns the keys of what has completed since the last call, in order.
    std::string after(double seconds) {
        clock_.advanceBy(seconds);
        return std::exchange(log_, "");
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
    EXPECT_EQ(frames->createNativeAnimation(), nullptr);
    group_->add(frames);
    group_->run();
    EXPECT_EQ(after(1), "short ");
    target_->removeAnimation("cancelled");
    EXPECT_EQ(after(0), "cancelled ");
    makeAnimation(AttributeName::TranslationX, {0, 1}, "replaced")->run();
    EXPECT_EQ(after(0), "replaced ");
    EXPECT_EQ(after(0), "replaced ") << "the end of one run removes the key of the other";
    EXPECT_EQ(after(1.6), "late ");
    clock_.advanceBy(0.5);
    EXPECT_EQ(after(0), "long group ") << "the group does not wait for frame animations";
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
    for (const auto& target : {std::shared_ptr<Target>(), std::make_shared<Target>(nullptr)}) {
        group_->setAnimatable(target);
        group_->run();
        EXPECT_EQ(after(2), "");
        EXPECT_FALSE(view_->layer()->hasAnimations());
    }
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
