#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "orvane/display/animation/FrameAnimation.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::display::animation {

namespace {

constexpr float kCompletion = 2;  // marks the completion in a log; larger than any phase

// The calls of one run.
struct Log {
    std::vector<float> phases;
    bool offMainThread = false;

    void call(float phase) {
        offMainThread |= !platform::isMainThread();
        phases.push_back(phase);
    }
};

}  // namespace

// Each run is started on a thread of its own. Frames and completions arrive in order, on the main
// thread only, and the animations are destroyed there.
TEST(FrameAnimationThreads, RunsStartedOnOtherThreadsAreCalledOnTheMainThread) {
    constexpr int runs = 16;
    std::vector<Log> logs(runs);
    std::vector<std::weak_ptr<FrameAnimation>> animations;
    std::atomic<int> destroyedElsewhere = 0;
    struct ThreadCheck {
        std::atomic<int>& counter;
        ~ThreadCheck() { counter += platform::isMainThread() ? 0 : 1; }
    };
    for (Log& log : logs) {
        const auto threadCheck = std::make_shared<ThreadCheck>(destroyedElsewhere);
        const auto animation = std::make_shared<FrameAnimation>(
            "frames", [&log, threadCheck](float phase) { log.call(phase); });
        animation->setDuration(0.02F);
        animation->setCompletionCallback([&log] { log.call(kCompletion); });
        std::jthread([&animation] { animation->run(); }).join();
        animations.push_back(animation);
    }
    const auto allReleased = [&animations] {
        return std::all_of(animations.begin(), animations.end(),
                           [](const auto& animation) { return animation.expired(); });
    };
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!allReleased() && std::chrono::steady_clock::now() < deadline) {
        g_main_context_iteration(nullptr, TRUE);
    }
    ASSERT_TRUE(allReleased());
    EXPECT_EQ(destroyedElsewhere, 0);
    for (const Log& log : logs) {
        EXPECT_FALSE(log.offMainThread);
        ASSERT_GE(log.phases.size(), 2U);
        EXPECT_EQ(log.phases[log.phases.size() - 2], 1.0F);
        EXPECT_EQ(log.phases.back(), kCompletion);
        EXPECT_TRUE(std::is_sorted(log.phases.begin(), log.phases.end()));
    }
}

}  // namespace orvane::display::animation
