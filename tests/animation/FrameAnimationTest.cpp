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

using Phases = std::vector<float>;

class FrameAnimationTest : public testing::Test {
protected:
    // An endless run keeps its callbacks forever, so they own only the log.
    std::shared_ptr<FrameAnimation> makeAnimation(float duration, float delay = 0,
                                                  std::int32_t repeatCount = 1) {
        auto animation = std::make_shared<FrameAnimation>(
            "frames", [log = log_](float phase) { log->push_back(phase); });
        animation->setDuration(duration);
        animation->setDelay(delay);
        animation->setRepeatCount(repeatCount);
        animation->setCompletionCallback([log = log_] { log->push_back(kEnd); });
        return animation;
    }

    // Refreshes the display after each number of seconds.
    void refresh(const std::vector<double>& steps) {
        for (const double step : steps) {
            clock_.advanceBy(step);
        }
    }

    static constexpr float kEnd = -1;  // what a completion adds to the log
    platform::CAVirtualClock clock_{100};
    std::shared_ptr<Phases> log_ = std::make_shared<Phases>();
};

TEST_F(FrameAnimationTest, RisesToExactlyOneAndThenCompletes) {
    const struct {
        const char* what;
        float duration, delay;
        std::int32_t repeatCount;
        std::vector<double> refreshes;  // the first one starts the run's time
        Phases expected;
        bool stays = false;
    } cases[] = {
        {"delayed", 2, 0.5F, 1, {1, 0.25, 0.25, 0.5, 1, 0.5, 1, 1}, {0, 0.25F, 0.75F, 1, kEnd}},
        {"twice", 1, 0, 2, {0, 0.75, 0.5, 0.5, 0.5}, {0, 0.75F, 0.25F, 0.75F, 1, kEnd}},
        {"the resolution is a millisecond",
         1,
         0,
         1,
         {0, 0.0004, 0.0004, 0.0004, 1},
         {0, 0, 0, 0.001F, 1, kEnd}},
        {"zero duration", 0, 0, 1, {0, 1, 1}, {}},
        {"negative duration", -1, 0, 1, {0, 1, 1}, {}},
        {"NaN duration", std::numeric_limits<float>::quiet_NaN(), 0, 1, {0, 1, 1}, {}},
        {"endless", 1, 0, 0, {0, 0.75, 0.5, 1000}, {0, 0.75F, 0.25F, 0.25F}, true},
        {"endless below zero", 1, 0, -1, {0, 0.75, 0.5, 1000}, {0, 0.75F, 0.25F, 0.25F}, true},
    };
    for (const auto& c : cases) {
        log_ = std::make_shared<Phases>();
        std::weak_ptr<FrameAnimation> weak;
        {
            const auto animation = makeAnimation(c.duration, c.delay, c.repeatCount);
            weak = animation;
            animation->run();
        }
        refresh(c.refreshes);
        EXPECT_EQ(*log_, c.expected) << c.what;
        EXPECT_EQ(weak.expired(), !c.stays)
            << c.what << ": a run releases the animation at its end";
    }
}

TEST_F(FrameAnimationTest, ACallbackMayReplaceItselfOrRunTheAnimationAgain) {
    // A callback that is replaced during its call keeps its captures until it returns.
    const auto animation = makeAnimation(1);
    int calls = 0;
    animation->setFrameCallback(
        [&calls, raw = animation.get(), own = std::string(1000, 'x')](float) {
            raw->setFrameCallback([](float) {});
            calls += static_cast<int>(own.size() / 1000);
        });
    int completions = 0;
    animation->setCompletionCallback([&] {
        if (++completions < 3) {
            animation->setDuration(10);  // does not extend the run that has just ended
            animation->run();
        }
    });
    animation->run();
    refresh({0, 1, 0, 9});
    EXPECT_EQ(completions, 1);
    refresh({1, 0, 10, 10});
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(completions, 3);
    animation->setCompletionCallback({});
}

TEST_F(FrameAnimationTest, AFailingCallbackEndsNeitherTheRunNorItsCompletion) {
    int calls = 0;
    const auto throwingInFrames = makeAnimation(1);
    throwingInFrames->setFrameCallback([&calls](float) {
        ++calls;
        throw std::runtime_error("on purpose");
    });
    throwingInFrames->run();
    refresh({0, 0.5, 0.5, 0.5});
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(*log_, Phases{kEnd});

    const auto throwingAtItsEnd = makeAnimation(1);
    throwingAtItsEnd->setCompletionCallback([] { throw 1; });
    const std::weak_ptr<FrameAnimation> weak = throwingAtItsEnd;
    throwingAtItsEnd->run();
    refresh({0, 1});
    EXPECT_EQ(*log_, (Phases{kEnd, 0, 1}));
    EXPECT_EQ(weak.use_count(), 1) << "the run has released the animation";

    const auto empty = std::make_shared<FrameAnimation>("frames");
    empty->setDuration(1);
    empty->setDelay(1);
    const FrameAnimationDelegate delegate(empty);
    EXPECT_NO_THROW(delegate.render(0.9F)) << "during the delay";
    EXPECT_THROW(delegate.render(1), std::bad_function_call);
    EXPECT_THROW(delegate.render(2), std::bad_function_call);
}

}  // namespace orvane::display::animation
