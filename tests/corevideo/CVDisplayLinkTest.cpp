#include "platform/corevideo/CVDisplayLink.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/corevideo/CVDisplay.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CAMediaTime.h"

using namespace orvane::platform;

namespace {

using Times = std::vector<std::uint64_t>;

CVDisplayLink make(CVDisplayLink::OutputCallback callback) {
    CVDisplayLink link;
    EXPECT_EQ(CVDisplayLink::createWithMainDisplay(link), kCVReturnSuccess);
    EXPECT_EQ(link.setOutputCallback(std::move(callback)), kCVReturnSuccess);
    return link;
}

template <typename Done>
void iterateUntil(Done done) {
    while (!done()) {
        g_main_context_iteration(nullptr, TRUE);
    }
}

}  // namespace

TEST(CVDisplayLink, ATimerRefreshesLinksOnTheMainThreadWhereThereIsNoDisplay) {
    const double before = CACurrentMediaTime() * 1e9;
    const auto token = std::make_shared<int>();
    Times times;
    // Only the callback holds the link, which it stops and releases itself.
    auto owner = std::make_shared<CVDisplayLink>();
    *owner = make([&, owner, token](CVDisplayLink& link, const CVTimeStamp& outputTime) {
        EXPECT_TRUE(isMainThread());
        times.push_back(outputTime.hostTime);
        if (times.size() == 4) {
            EXPECT_EQ(link.stop(), kCVReturnSuccess);
            link.release();
            EXPECT_FALSE(link);
            owner->release();
        }
        return 0;
    });
    owner->start();
    owner.reset();
    iterateUntil([&] { return token.use_count() == 1; });
    ASSERT_EQ(times.size(), 4U);
    EXPECT_GT(static_cast<double>(times[0]), before);
    EXPECT_GE(times[3] - times[0], 48000000U) << "60 refreshes a second";
}

TEST(CVDisplayLink, OtherThreadsStartAndStopALink) {
    std::atomic<int> calls = 0;
    CVDisplayLink link = make([&](CVDisplayLink&, const CVTimeStamp&) {
        ++calls;
        return 0;
    });
    std::atomic<bool> done = false;
    const std::jthread other([&] {
        EXPECT_EQ(link.stop(), kCVReturnDisplayLinkNotRunning);
        for (int run = 0; run < 3; ++run) {
            const int before = calls;
            EXPECT_EQ(link.start(), kCVReturnSuccess);
            EXPECT_EQ(link.start(), kCVReturnDisplayLinkAlreadyRunning);
            while (calls == before) {
                std::this_thread::yield();
            }
            EXPECT_EQ(link.stop(), kCVReturnSuccess);
        }
        done = true;
        dispatchMainAsync([] {});
    });
    iterateUntil([&] { return done.load(); });
}

TEST(CVDisplayLink, ANullLinkAcceptsEveryCall) {
    CVDisplayLink link;
    EXPECT_EQ(link.setOutputCallback([](CVDisplayLink&, const CVTimeStamp&) { return 0; }),
              kCVReturnInvalidArgument);
    EXPECT_EQ(link.start(), kCVReturnInvalidArgument);
    EXPECT_EQ(link.stop(), kCVReturnInvalidArgument);
    link.release();
    CVDisplayLink::createWithMainDisplay(link);
    EXPECT_EQ(link.start(), kCVReturnDisplayLinkCallbacksNotSet);
}

TEST(CVDisplayLink, AVirtualClockRefreshesWithEachAdvance) {
    CAVirtualClock clock(2);
    Times times;
    CVDisplayLink other = make([&](CVDisplayLink&, const CVTimeStamp&) {
        ADD_FAILURE() << "stopped by the callback before it";
        return 0;
    });
    CVDisplayLink link = make([&](CVDisplayLink& self, const CVTimeStamp& outputTime) {
        times.push_back(outputTime.hostTime);
        other.stop();
        if (times.size() == 2) {
            self.stop();
        }
        return 0;
    });
    link.start();
    other.start();
    for (const double time : {2.25, 2.5, 2.75}) {
        clock.advanceTo(time);
    }
    EXPECT_EQ(times, (Times{2250000000, 2500000000}));
}

TEST(CVDisplayLink, FollowsOneDisplayUntilThatStops) {
    Times times;
    CVDisplayLink link = make([&](CVDisplayLink&, const CVTimeStamp& outputTime) {
        times.push_back(outputTime.hostTime);
        return 0;
    });
    std::string requests;
    CVDisplay shown([&] { requests += "shown "; });
    CVDisplay hidden([&] { requests += "hidden "; });
    const double now = CACurrentMediaTime();
    EXPECT_FALSE(shown.refresh(now)) << "no link runs";
    link.start();
    EXPECT_EQ(requests, "shown ");
    EXPECT_TRUE(shown.refresh(now + 1));
    EXPECT_FALSE(hidden.refresh(now + 2));
    ASSERT_EQ(times.size(), 1U);
    EXPECT_NEAR(static_cast<double>(times[0]) * 1e-9, now + 1, 1e-6);
    // Nothing calls refresh() any more: the timer does, and passes the links on to the next
    // display.
    iterateUntil([&] { return times.size() > 1; });
    EXPECT_EQ(requests, "shown hidden ");
    EXPECT_EQ(times[1], times[0]) << "time does not go back";
    EXPECT_FALSE(shown.refresh(now + 2));
    EXPECT_TRUE(hidden.refresh(now + 2));
    EXPECT_EQ(times.size(), 3U);
    link.stop();
    EXPECT_FALSE(hidden.refresh(now + 3));
}
