#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <vector>

#include "orvane/display/animation/FrameAnimation.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::display::animation {

using namespace std::chrono_literals;

namespace {

constexpr float completion = 2;  // stands for it in a log, above all phases

// What one run has called, on the main thread.
struct Log {
    std::vector<float> phases;
    bool offMainThread = false;

    void call(float phase) {
        offMainThread |= !platform::isMainThread();
        phases.push_back(phase);
    }
};

}  // namespace

// Links with threads of their own: frames and completion come in on the main thread only, in order,
// and the animation dies there.
TEST(FrameAnimationThreads, RunsOnLinksOfManyThreads) {
    platform::CVDisplayLink::setRefreshRate(1000);
    constexpr int runs = 16;
    std::vector<Log> logs(runs);
    std::vector<std::weak_ptr<FrameAnimation>> animations;
    std::atomic<int> diedElsewhere = 0;
    struct Sentry {
        std::atomic<int>& counter;
        ~Sentry() { counter += platform::isMainThread() ? 0 : 1; }
    };
    for (Log& log : logs) {
        const auto sentry = std::make_shared<Sentry>(diedElsewhere);
        const auto animation = std::make_shared<FrameAnimation>(
            "frames", [&log, sentry](float phase) { log.call(phase); });
        animation->setDuration(0.02F);
        animation->setCompletionCallback([&log] { log.call(completion); });
        animation->run();
        animations.push_back(animation);
    }
    const auto allGone = [&animations] {
        return std::all_of(animations.begin(), animations.end(),
                           [](const auto& animation) { return animation.expired(); });
    };
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (!allGone() && std::chrono::steady_clock::now() < deadline) {
        platform::drainMainQueue(10ms);
    }
    ASSERT_TRUE(allGone());
    EXPECT_EQ(diedElsewhere, 0);
    for (const Log& log : logs) {
        EXPECT_FALSE(log.offMainThread);
        ASSERT_GE(log.phases.size(), 2U);
        EXPECT_EQ(log.phases[log.phases.size() - 2], 1.0F);
        EXPECT_EQ(log.phases.back(), completion);
        EXPECT_TRUE(std::is_sorted(log.phases.begin(), log.phases.end()));
    }
}

// The process ends while an endless animation runs: its callback is not called any more, on
// whatever thread, once the main queue is closed.
TEST(FrameAnimationThreads, AnEndlessRunDoesNotOutliveTheMainQueue) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto endWhileRunning = [] {
        platform::CVDisplayLink::setRefreshRate(1000);
        static std::atomic<int> calls = 0;
        const auto animation = std::make_shared<FrameAnimation>("endless", [](float) { ++calls; });
        animation->setDuration(1);
        animation->setRepeatCount(0);
        animation->run();
        while (calls < 3) {
            platform::drainMainQueue(10ms);
        }
        platform::closeMainQueue();
        const int atClosing = calls;
        // A second link counts refreshes in which the first could still have called.
        std::atomic<int> refreshes = 0;
        platform::CVDisplayLink link;
        platform::CVDisplayLink::createWithMainDisplay(link);
        link.setOutputCallback([&refreshes](platform::CVDisplayLink&, const auto&) {
            ++refreshes;
            refreshes.notify_one();
            return 0;
        });
        link.start();
        for (int seen = 0; seen < 20; seen = refreshes) {
            refreshes.wait(seen);
        }
        std::_Exit(calls == atClosing ? 0 : 1);
    };
    EXPECT_EXIT(endWhileRunning(), testing::ExitedWithCode(0), "");
}

}  // namespace orvane::display::animation
