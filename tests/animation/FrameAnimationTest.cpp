#include "orvane/display/animation/FrameAnimation.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "orvane/display/animation/FrameLoop.h"
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
        {"in milliseconds", 1, 0, 1, {0, 0.0006, 0.0006, 1}, {0, 0, 0.001F, 1, kEnd}},
        {"zero duration", 0, 0, 1, {0, 1, 1}, {}},
        {"NaN duration", std::numeric_limits<float>::quiet_NaN(), 0, 1, {0, 1, 1}, {}},
        {"endless", 1, 0, 0, {0, 0.75, 0.5, 1000}, {0, 0.75F, 0.25F, 0.25F}, true},
    };
    for (const auto& c : cases) {
        log_ = std::make_shared<Phases>();
        auto animation = makeAnimation(c.duration, c.delay, c.repeatCount);
        animation->run();
        const std::weak_ptr<FrameAnimation> weak = std::exchange(animation, nullptr);
        refresh(c.refreshes);
        EXPECT_EQ(*log_, c.expected) << c.what;
        EXPECT_EQ(weak.expired(), !c.stays)
            << c.what << ": a run releases the animation at its end";
    }
}

TEST_F(FrameAnimationTest, ACallbackMayReplaceItselfOrRunTheAnimationAgain) {
    const auto animation = makeAnimation(1);
    // A callback that is replaced during its call keeps its captures until it returns.
    animation->setFrameCallback([&, own = std::string(1000, 'x')](float) {
        animation->setFrameCallback([](float) {});
        log_->push_back(static_cast<float>(own.size()));
    });
    animation->setCompletionCallback([&] {
        log_->push_back(kEnd);
        if (log_->size() < 4) {
            animation->setDuration(10);  // does not extend the run that has just ended
            animation->run();
        }
    });
    animation->run();
    refresh({0, 1, 0, 9});
    EXPECT_EQ(*log_, (Phases{1000, kEnd}));
    refresh({1, 0, 10, 10});
    EXPECT_EQ(*log_, (Phases{1000, kEnd, kEnd, kEnd}));
}

TEST_F(FrameAnimationTest, AFailingCallbackEndsNeitherTheRunNorItsCompletion) {
    auto animation = makeAnimation(1);
    animation->setFrameCallback([log = log_](float phase) {
        log->push_back(phase);
        throw std::runtime_error("on purpose");
    });
    animation->setCompletionCallback([log = log_] {
        log->push_back(kEnd);
        throw 1;
    });
    animation->run();
    const std::weak_ptr<FrameAnimation> weak = std::exchange(animation, nullptr);
    refresh({0, 0.5, 0.5, 0.5});
    EXPECT_EQ(*log_, (Phases{0, 0.5F, 1, kEnd}));
    EXPECT_TRUE(weak.expired()) << "the run has released the animation";
}

TEST_F(FrameAnimationTest, StopEndsAnEndlessRunWithTheNextFrame) {
    const struct {
        StopAt where;
        float delay;
        Phases expected;
    } cases[] = {{StopAt::Presentation, 0, {0, 0.25F, kEnd}},
                 {StopAt::End, 0, {0, 0.25F, 1, kEnd}},
                 {StopAt::End, 5, {1, kEnd}}};
    for (const auto& c : cases) {
        log_ = std::make_shared<Phases>();
        auto animation = makeAnimation(1, c.delay, -1);
        animation->stop(c.where);  // does nothing: it does not run
        animation->run();
        refresh({0, 0.25});
        animation->stop(c.where);
        animation->stop(StopAt::End);
        const std::weak_ptr<FrameAnimation> weak = std::exchange(animation, nullptr);
        refresh({0.25, 0.25});
        EXPECT_EQ(*log_, c.expected);
        EXPECT_TRUE(weak.expired());
    }
}

TEST_F(FrameAnimationTest, AFunctionMayStopItsRun) {
    auto animation = makeAnimation(1, 0, -1);
    animation->setFrameCallback([&animation, log = log_](float phase) {
        log->push_back(phase);
        animation->stop(StopAt::Presentation);
    });
    animation->run();
    refresh({0, 0.25, 0.25});
    EXPECT_EQ(*log_, (Phases{0, kEnd}));
}

TEST_F(FrameAnimationTest, AFrameLoopRunsUntilItIsStopped) {
    const auto call = [log = log_](double seconds, double elapsed) {
        log->push_back(static_cast<float>(seconds));
        log->push_back(static_cast<float>(elapsed));
        throw std::runtime_error("on purpose");
    };
    {
        FrameLoop loop;
        loop.start(call);
        EXPECT_TRUE(loop.isRunning());
        refresh({1, 0.25, 0.125});
        EXPECT_EQ(std::exchange(*log_, {}), (Phases{0, 0, 0.25F, 0.25F, 0.375F, 0.125F}));
        loop.start([&](double, double) {
            loop.stop();
            log_->push_back(loop.isRunning() ? 1 : 2);
        });
        refresh({1, 1});
        EXPECT_EQ(std::exchange(*log_, {}), (Phases{2}));
        loop.start({});
        EXPECT_FALSE(loop.isRunning());
        loop.start(call);
    }
    refresh({1});
    EXPECT_EQ(*log_, Phases()) << "its destructor stops it";
}

}  // namespace orvane::display::animation
