#include "orvane/display/animation/ValueAnimation.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "tests/animation/AnimationFixture.h"

namespace orvane::display::animation {

using platform::CATransform3D;
using platform::CATransform3DIdentity;
using platform::CGPoint;

using ValueAnimationTest = AnimationTest;

TEST_F(ValueAnimationTest, LeadsEachAttributeThroughItsKeyFrames) {
    constexpr float quarter = std::numbers::pi_v<float> / 2;
    struct Case {
        AttributeName attribute;
        std::vector<float> values;  // what a quarter of the way shows is asked for
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
        // A quarter turn given as matrices turns; it does not shrink on the way.
        {AttributeName::Affine,
         {1, 0, 0, 1, 0, 0, 0, 1, -1, 0, 0, 0, 1, 0, 0, 1, 0, 0},
         {s, s, -s, s, 0, 0}},
        // One key frame and a tail that makes no second one.
        {AttributeName::Translation, {5, 6, 7}, {1, 0, 0, 1, 5, 6}},
        // Seven numbers are three key frames.
        {AttributeName::Translation, {0, 0, 8, 6, 0, 0, 50}, {1, 0, 0, 1, 4, 3}},
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
        clock_.advanceBy(0.75);
        EXPECT_EQ(log_, "key ");
        EXPECT_EQ(shown().transform, CATransform3DIdentity);
    }
}

TEST_F(ValueAnimationTest, AttributesAboveTheLastHaveNoKeyPath) {
    EXPECT_EQ(getKeyPath(AttributeName::Affine), "transform");
    EXPECT_EQ(getKeyPath(static_cast<AttributeName>(6)), "");
    EXPECT_EQ(getKeyPath(static_cast<AttributeName>(-1)), "");
}

TEST_F(ValueAnimationTest, RunsItsTimeWithoutAWholeKeyFrame) {
    for (const AttributeName attribute : {AttributeName::Affine, AttributeName::Opacity}) {
        log_.clear();
        const std::vector<float> values(attribute == AttributeName::Affine ? 5 : 0);
        makeAnimation(attribute, values)->run();
        EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
        clock_.advanceBy(0.9);
        EXPECT_EQ(log_, "");
        clock_.advanceBy(0.2);
        EXPECT_EQ(log_, "key ");
    }
}

TEST_F(ValueAnimationTest, WritesTheLastKeyFrameOfATransformToTheLayerAtOnce) {
    const auto translation = makeAnimation(AttributeName::Translation, {1, 2, 3, 4});
    translation->setDelay(5);
    translation->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeTranslation(3, 4, 1));

    makeAnimation(AttributeName::Affine, {1, 0, 0, 1, 0, 0, 2, 0, 0, 3, 4, 5})->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3D::makeAffineTransform({2, 0, 0, 3, 4, 5}));

    view_->layer()->setTransform(CATransform3DIdentity);
    makeAnimation(AttributeName::Rotation, {1, 2})->run();
    EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
}

TEST_F(ValueAnimationTest, RepeatsAsOftenAsItIsTold) {
    struct Case {
        std::int32_t count;
        double end;  // seconds after it began; 0 for never
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
        EXPECT_EQ(log_, "key ") << "cancelling ends it, and only once";
    }
}

TEST_F(ValueAnimationTest, ShowsTheModelDuringItsDelay) {
    const auto animation = makeAnimation(AttributeName::TranslationX, {10, 20});
    animation->setDelay(2);
    animation->run();
    clock_.advanceBy(1.9);
    EXPECT_EQ(shownTransform().tx, 0);
    clock_.advanceBy(0.6);
    EXPECT_NEAR(shownTransform().tx, 15, 1e-4);
    clock_.advanceBy(0.51);
    EXPECT_EQ(log_, "key ");
}

TEST_F(ValueAnimationTest, LeavesTheLayerOpaque) {
    view_->layer()->setOpacity(0.3);
    makeAnimation(AttributeName::TranslationX, {0, 1})->run();
    clock_.advanceBy(1);
    EXPECT_EQ(view_->layer()->opacity(), 0.3);
    makeAnimation(AttributeName::Opacity, {1, 0.2F})->run();
    clock_.advanceBy(1);
    EXPECT_EQ(view_->layer()->opacity(), 1.0);
}

TEST_F(ValueAnimationTest, TurnsAboutItsAnchorPointAndPutsItBack) {
    struct Case {
        bool x, y;
        CGPoint position, anchorPoint;  // while it runs
        CGPoint after;                  // position, having been moved by 1, 1 meanwhile
    };
    for (const Case& c : {Case{true, true, {80, 90}, {0.5, 1}, {30, 40}},
                          Case{true, false, {80, 40}, {0.5, 0}, {30, 41}},
                          Case{false, true, {30, 90}, {0, 1}, {31, 40}},
                          Case{false, false, {30, 40}, {0, 0}, {31, 41}}}) {
        view_->setFrame({{30, 40}, {100, 50}});
        const auto animation = makeAnimation(AttributeName::Rotation, {0, 1});
        if (c.x) {
            animation->setAnchorPointX(0.5F);
        }
        if (c.y) {
            animation->setAnchorPointY(1);
        }
        animation->run();
        EXPECT_EQ(view_->layer()->position(), c.position);
        EXPECT_EQ(view_->layer()->anchorPoint(), c.anchorPoint);
        // The layer stands where it stood, and turns about the anchor.
        const auto place = view_->layer()->affineTransform(shown());
        EXPECT_NEAR(place.tx, 30, 1e-9);
        EXPECT_NEAR(place.ty, 40, 1e-9);

        view_->layer()->setPosition({c.position.x + 1, c.position.y + 1});
        clock_.advanceBy(1);
        EXPECT_EQ(view_->layer()->position(), c.after);
        EXPECT_EQ(view_->layer()->anchorPoint(), (CGPoint{0, 0}));
    }
}

TEST_F(ValueAnimationTest, RestoresTheLayerBeforeTheCallback) {
    const auto animation = makeAnimation(AttributeName::Translation, {0, 0, 30, 40});
    animation->setAnchorPointX(1);
    bool called = false;
    animation->setCompletionCallback([&] {
        called = true;
        EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
        EXPECT_EQ(view_->layer()->position(), (CGPoint{30, 40}));
    });
    animation->run();
    clock_.advanceBy(1);
    EXPECT_TRUE(called);
}

TEST_F(ValueAnimationTest, ASecondRunSavesWhatTheFirstHasSet) {
    const auto animation = makeAnimation(AttributeName::Rotation, {0, 1});
    animation->setAnchorPointX(0.5F);
    animation->run();
    animation->run();
    EXPECT_EQ(view_->layer()->position(), (CGPoint{130, 40}));
    clock_.advanceBy(0);
    EXPECT_EQ(view_->layer()->position(), (CGPoint{80, 40}));
    EXPECT_EQ(view_->layer()->anchorPoint(), (CGPoint{0.5, 0}));
}

TEST_F(ValueAnimationTest, EachOfTwoRunsCompletesOnce) {
    // The second takes the first's place; the end of the first takes their key off, and with it the
    // second.
    const auto animation = makeAnimation(AttributeName::Opacity, {1, 0});
    animation->run();
    clock_.advanceBy(0.5);
    animation->run();
    clock_.advanceBy(0);
    EXPECT_EQ(log_, "key ");
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
    targets[1]->removeAnimation("key");  // no more than nothing
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
        {"starts another", [&](ValueAnimation&) { other->run(); }, "beside other "},
        {"sets another callback in its own place",
         [&](ValueAnimation& animation) { animation.setCompletionCallback({}); }, "beside "},
        {"cancels", [&](ValueAnimation&) { target_->removeAnimation("beside"); }, "beside "},
        {"throws an exception", [](ValueAnimation&) { throw std::runtime_error("on purpose"); },
         "beside "},
        {"throws something else", [](ValueAnimation&) { throw 1; }, "beside "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        log_.clear();
        const auto animation = makeAnimation(AttributeName::TranslationX, {0, 1}, "first");
        int calls = 0;
        // Captures that the callback still uses after it was replaced.
        animation->setCompletionCallback([&calls, callback = c.callback, raw = animation.get()] {
            const auto keep = std::make_shared<std::string>(1000, 'x');
            callback(*raw);
            calls += static_cast<int>(keep->size() / 1000);
        });
        const bool throws = std::string(c.what).starts_with("throws");
        animation->run();
        makeAnimation(AttributeName::TranslationY, {0, 1}, "beside")->run();
        for (int i = 0; i < 5; ++i) {
            clock_.advanceBy(1);
        }
        EXPECT_EQ(log_, c.log);
        EXPECT_EQ(calls, throws ? 0 : 1);
        EXPECT_FALSE(view_->layer()->hasAnimations());
        EXPECT_EQ(view_->layer()->transform(), CATransform3DIdentity);
    }
}

TEST_F(ValueAnimationTest, RunFromItsOwnCallbackItIsTakenOffAtOnceAndCompletes) {
    // The key is taken off after the callback, whoever holds it by then.
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

TEST_F(ValueAnimationTest, ThousandsRunAtOnceAndEachCompletesOnce) {
    constexpr int count = 5000;
    std::vector<std::shared_ptr<Target>> targets;
    std::vector<int> completions(count);
    for (int i = 0; i < count; ++i) {
        targets.push_back(std::make_shared<Target>(std::make_shared<platform::NSView>()));
        const auto animation = makeAnimation(AttributeName::TranslationX, {0, 10});
        animation->setAnimatable(targets.back());
        animation->setDuration(static_cast<float>(1 + i % 7));
        animation->setCompletionCallback([&completions, i] { ++completions[i]; });
        animation->run();
    }
    for (int i = 0; i < 8; ++i) {
        clock_.advanceBy(1);
    }
    EXPECT_EQ(completions, std::vector<int>(count, 1));
}

}  // namespace orvane::display::animation
