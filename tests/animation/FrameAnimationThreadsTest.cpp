#include <gtest/gtest.h>

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "orvane/display/animation/FrameAnimation.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::display::animation {

using namespace std::chrono_literals;

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

// Each run has a link with a thread of its own. Frames and completions arrive in order, on the main
// thread only, and the animations are destroyed there.
TEST(FrameAnimationThreads, RunsOnLinksOfManyThreads) {
    platform::CVDisplayLink::setRefreshRate(1000);
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
        animation->run();
        animations.push_back(animation);
    }
    const auto allReleased = [&animations] {
        return std::all_of(animations.begin(), animations.end(),
                           [](const auto& animation) { return animation.expired(); });
    };
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (!allReleased() && std::chrono::steady_clock::now() < deadline) {
        platform::drainMainQueue(10ms);
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

// A link whose thread cannot be started logs an error and does not keep the animation alive.
TEST(FrameAnimationThreads, AFailedStartIsLoggedAndReleasesTheAnimation) {
    pthread_attr_t attributes;
    pthread_getattr_default_np(&attributes);
    pthread_attr_t impossible = attributes;
    pthread_attr_setstacksize(&impossible, std::size_t{1} << 48);  // larger than the address space
    const auto animation = std::make_shared<FrameAnimation>("frames", [](float) {});
    animation->setDuration(1);
    testing::internal::CaptureStderr();
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    animation->run();
    pthread_setattr_default_np(&attributes);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("DisplayLink started with error:-6660"),
              std::string::npos);
    EXPECT_EQ(animation.use_count(), 1);
}

// The process ends while an endless animation runs: after the main queue is closed no thread calls
// the callback.
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
