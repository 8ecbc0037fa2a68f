#include "orvane/display/animation/FrameAnimation.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "orvane/display/animation/FrameAnimationDelegate.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {

class FrameAnimationTest : public testing::Test {
protected:
    std::shared_ptr<FrameAnimation> makeAnimation(float duration, float delay = 0,
                                                  std::int32_t repeatCount = 1) {
        auto animation = std::make_shared<FrameAnimation>(
            "frames", [this](float phase) { phases_.push_back(phase); });
        animation->setDuration(duration);
        animation->setDelay(delay);
        animation->setRepeatCount(repeatCount);
        animation->setCompletionCallback([this] {
            ++completions_;
            phasesAtCompletion_ = phases_;
        });
        return animation;
    }

    // A refresh of the display after each so many seconds.
    void refresh(std::initializer_list<double> steps) {
        for (const double step : steps) {
            clock_.advanceBy(step);
        }
    }

    platform::CAVirtualClock clock_{100};
    std::vector<float> phases_;
    std::vector<float> phasesAtCompletion_;
    int completions_ = 0;
};

TEST_F(FrameAnimationTest, RisesToExactlyOneAndThenCompletes) {
    makeAnimation(2, 0.5F)->run();
    refresh({1, 0.25, 0.25, 0.5, 1});  // the first tick starts the run's time
    EXPECT_EQ(phases_, (std::vector<float>{0, 0.25F, 0.75F}));
    EXPECT_EQ(completions_, 0);
    refresh({0.5});
    EXPECT_EQ(phases_, (std::vector<float>{0, 0.25F, 0.75F, 1}));
    EXPECT_EQ(completions_, 1);
    EXPECT_EQ(phasesAtCompletion_, phases_);
    refresh({1, 1});
    EXPECT_EQ(phases_.size(), 4U);
    EXPECT_EQ(completions_, 1);
}

TEST_F(FrameAnimationTest, PassesRepeatAndTheLastEndsAtOne) {
    makeAnimation(1, 0, 2)->run();
    refresh({0, 0.75, 0.5, 0.5, 0.5});
    EXPECT_EQ(phases_, (std::vector<float>{0, 0.75F, 0.25F, 0.75F, 1}));
    EXPECT_EQ(completions_, 1);
}

TEST_F(FrameAnimationTest, DoesNothingWithoutADuration) {
    for (const float duration : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        makeAnimation(duration)->run();
        refresh({0, 1, 1});
    }
    EXPECT_TRUE(phases_.empty());
    EXPECT_EQ(completions_, 0);
}

TEST_F(FrameAnimationTest, TimeHasAGrainOfAMillisecond) {
    makeAnimation(1)->run();
    refresh({0, 0.0004, 0.0004, 0.0004});
    EXPECT_EQ(phases_, (std::vector<float>{0, 0, 0, 0.001F}));
    refresh({1});
}

TEST_F(FrameAnimationTest, RunsSideBySideAndTwice) {
    const auto animation = makeAnimation(1);
    animation->run();
    refresh({0, 0.5});
    animation->run();
    refresh({0, 0.5, 0.5});
    EXPECT_EQ(phases_, (std::vector<float>{0, 0.5F, 0.5F, 0, 1, 0.5F, 1}));
    EXPECT_EQ(completions_, 2);
}

TEST_F(FrameAnimationTest, LetsGoOfTheAnimationWhenTheRunIsOver) {
    auto animation = makeAnimation(1);
    const std::weak_ptr<FrameAnimation> weak = animation;
    animation->run();
    animation.reset();
    refresh({0, 0.5});
    EXPECT_FALSE(weak.expired());
    refresh({0.5});
    EXPECT_EQ(completions_, 1);
    EXPECT_TRUE(weak.expired());
}

TEST_F(FrameAnimationTest, ACallbackMayDoAnything) {
    // Replaced while it runs, it keeps what it holds until it returns.
    const auto replaced = makeAnimation(1);
    int calls = 0;
    replaced->setFrameCallback([&calls, raw = replaced.get(), own = std::string(1000, 'x')](float) {
        raw->setFrameCallback([](float) {});
        calls += static_cast<int>(own.size() / 1000);
    });
    replaced->run();
    refresh({0, 0.5, 0.5});
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(completions_, 1);

    // Runs it again.
    const auto again = makeAnimation(1);
    again->setCompletionCallback([&] {
        if (++completions_ < 4) {
            again->run();
        }
    });
    again->run();
    for (int i = 0; i < 10; ++i) {
        refresh({1});
    }
    EXPECT_EQ(completions_, 4);
    again->setCompletionCallback({});
}

TEST_F(FrameAnimationTest, AFailingCallbackGoesOnAndTheCompletionIsNotLost) {
    int calls = 0;
    const auto throwing = makeAnimation(1);
    throwing->setFrameCallback([&calls](float) {
        ++calls;
        throw std::runtime_error("on purpose");
    });
    throwing->run();
    refresh({0, 0.5, 0.5, 0.5});
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(completions_, 1);

    const auto endingBadly = makeAnimation(1);
    endingBadly->setCompletionCallback([] { throw 1; });
    const std::weak_ptr<FrameAnimation> weak = endingBadly;
    endingBadly->run();
    refresh({0, 1});
    EXPECT_EQ(phases_, (std::vector<float>{0, 1}));
    EXPECT_EQ(weak.use_count(), 1) << "the run has let go";
}

TEST_F(FrameAnimationTest, AnEmptyCallbackFailsWhenTheDelayHasPassed) {
    const auto animation = std::make_shared<FrameAnimation>("frames");
    animation->setDuration(1);
    animation->setDelay(1);
    const FrameAnimationDelegate delegate(animation);
    EXPECT_NO_THROW(delegate.render(0.9F));
    EXPECT_THROW(delegate.render(1), std::bad_function_call);
    EXPECT_THROW(delegate.render(2), std::bad_function_call);
}

TEST_F(FrameAnimationTest, PhaseIsTheFractionOfThePassAndStopsAtTheRepeatCount) {
    struct Case {
        float time;
        float delay;
        float duration;
        std::int32_t repeatCount;
        float passes;
        float phase;
        bool stops;
    };
    const Case cases[] = {
        {0.5F, 0, 2, 1, 0.25F, 0.25F, false},
        {2, 0, 2, 1, 1, 0, true},
        {5, 1, 2, 3, 2, 0, false},
        {7, 1, 2, 3, 3, 0, true},
        {0.5F, 1, 2, 1, -0.25F, 0.75F, false},  // in the delay
        {1000.5F, 0, 1, 0, 1000.5F, 0.5F, false},
        {1000.5F, 0, 1, -1, 1000.5F, 0.5F, false},
        {1, 0, 0, 1, 1e6F, 0, true},  // a duration below a millionth counts as one
    };
    for (const Case& c : cases) {
        const auto animation = makeAnimation(c.duration, c.delay, c.repeatCount);
        const FrameAnimationDelegate delegate(animation);
        EXPECT_FLOAT_EQ(delegate.durationTime(c.time), c.passes);
        EXPECT_FLOAT_EQ(delegate.animationTime(c.time), c.phase);
        EXPECT_EQ(delegate.isStopAnimation(c.time), c.stops);
    }
}

TEST_F(FrameAnimationTest, ATickWithoutADelegateOrALinkIsHarmless) {
    platform::CVDisplayLink link;
    std::shared_ptr<FrameAnimationDelegate> delegate;
    EXPECT_EQ(FrameAnimationDelegate::tick(link, {5}, delegate), 0);

    delegate = std::make_shared<FrameAnimationDelegate>(makeAnimation(1));
    EXPECT_EQ(FrameAnimationDelegate::tick(link, {5'000'000}, delegate), 0);
    EXPECT_EQ(delegate->startTimestamp(), 5'000'000U);
    EXPECT_EQ(FrameAnimationDelegate::tick(link, {1'005'000'000}, delegate), 0);
    EXPECT_EQ(delegate, nullptr);
    EXPECT_EQ(phases_, (std::vector<float>{0, 1}));
    EXPECT_EQ(completions_, 1);
}

TEST_F(FrameAnimationTest, EndlessForCountsBelowOne) {
    for (const std::int32_t count : {0, -1}) {
        // What its callbacks hold stays for ever: nothing of the test's.
        const auto phases = std::make_shared<std::vector<float>>();
        const auto animation = makeAnimation(1, 0, count);
        animation->setFrameCallback([phases](float phase) { phases->push_back(phase); });
        animation->setCompletionCallback([phases] { phases->push_back(-1); });
        animation->run();
        refresh({0, 0.75, 0.5, 1000});
        EXPECT_EQ(*phases, (std::vector<float>{0, 0.75F, 0.25F, 0.25F}));
    }
}

}  // namespace orvane::display::animation
