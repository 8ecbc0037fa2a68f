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

constexpr float kCompletion = 2;  // marks the completion in a log; larger than any phase

// Each run is started on a thread of its own. Frames and completions arrive in order, on the main
// thread only, and the animations are destroyed there.
TEST(FrameAnimationThreads, RunsStartedOnOtherThreadsAreCalledOnTheMainThread) {
    std::vector<std::vector<float>> logs(16);
    std::atomic<int> offMainThread = 0;
    const auto checkThread = [&] { offMainThread += platform::isMainThread() ? 0 : 1; };
    std::atomic<std::size_t> destroyed = 0;
    for (std::vector<float>& log : logs) {
        const std::shared_ptr<void> atDestruction(nullptr, [&](void*) {
            checkThread();
            ++destroyed;
        });
        const auto animation =
            std::make_shared<FrameAnimation>("frames", [&, atDestruction](float phase) {
                checkThread();
                log.push_back(phase);
            });
        animation->setDuration(0.02F);
        animation->setCompletionCallback([&] {
            checkThread();
            log.push_back(kCompletion);
        });
        std::jthread([&animation] { animation->run(); }).join();
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (destroyed < logs.size() && std::chrono::steady_clock::now() < deadline) {
        g_main_context_iteration(nullptr, TRUE);
    }
    ASSERT_EQ(destroyed, logs.size());
    EXPECT_EQ(offMainThread, 0);
    for (const std::vector<float>& log : logs) {
        ASSERT_GE(log.size(), 2U);
        EXPECT_EQ(log[log.size() - 2], 1.0F);
        EXPECT_EQ(log.back(), kCompletion);
        EXPECT_TRUE(std::is_sorted(log.begin(), log.end()));
    }
}

}  // namespace orvane::display::animation
