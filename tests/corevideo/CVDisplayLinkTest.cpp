#include "platform/corevideo/CVDisplayLink.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <future>
#include <memory>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

#include "platform/quartzcore/CAMediaTime.h"

using namespace orvane::platform;

namespace {

CVDisplayLink make(CVDisplayLink::OutputCallback callback) {
    CVDisplayLink link;
    EXPECT_EQ(CVDisplayLink::createWithMainDisplay(link), kCVReturnSuccess);
    EXPECT_EQ(link.setOutputCallback(std::move(callback)), kCVReturnSuccess);
    return link;
}

// A future that is ready when the last copy of the token has gone.
std::pair<std::shared_ptr<void>, std::future<void>> token() {
    auto gone = std::make_shared<std::promise<void>>();
    std::future<void> future = gone->get_future();
    return {std::shared_ptr<void>(nullptr, [gone](void*) { gone->set_value(); }),
            std::move(future)};
}

}  // namespace

TEST(CVDisplayLink, CallsBackOnAThreadOfItsOwnUntilStoppedFromWithin) {
    const double before = CACurrentMediaTime() * 1e9;
    std::promise<std::vector<std::uint64_t>> done;
    std::vector<std::uint64_t> times;
    std::thread::id caller;
    auto [held, gone] = token();
    // Nobody but the callback holds the link.
    auto owner = std::make_shared<CVDisplayLink>();
    *owner = make(
        [&, owner, keep = std::move(held)](CVDisplayLink& link, const CVTimeStamp& outputTime) {
            caller = std::this_thread::get_id();
            times.push_back(outputTime.hostTime);
            if (times.size() == 4) {
                EXPECT_EQ(link.stop(), kCVReturnSuccess);
                link.release();
                EXPECT_FALSE(link);
                owner->release();
                done.set_value(times);
            }
            return 0;
        });
    owner->start();
    owner.reset();
    const std::vector<std::uint64_t> seen = done.get_future().get();
    gone.wait();
    EXPECT_NE(caller, std::this_thread::get_id());
    EXPECT_EQ(times.size(), 4U);
    EXPECT_GT(static_cast<double>(seen[0]), before);
    for (std::size_t i = 1; i < seen.size(); ++i) {
        // Whole refreshes apart, at 60 a second.
        EXPECT_GE(seen[i] - seen[i - 1], 16000000U);
    }
}

TEST(CVDisplayLink, StopsFromOutsideAndStartsAgain) {
    // A callback may still be under way when stop has returned: what it uses is its own.
    auto calls = std::make_shared<std::counting_semaphore<>>(0);
    auto [held, gone] = token();
    CVDisplayLink link = make([calls, keep = std::move(held)](CVDisplayLink&, const CVTimeStamp&) {
        calls->release();
        return 0;
    });
    EXPECT_EQ(link.stop(), kCVReturnDisplayLinkNotRunning);
    for (int run = 0; run < 3; ++run) {
        EXPECT_EQ(link.start(), kCVReturnSuccess);
        EXPECT_EQ(link.start(), kCVReturnDisplayLinkAlreadyRunning);
        calls->acquire();
        EXPECT_EQ(link.stop(), kCVReturnSuccess);
    }
    link.release();
    gone.wait();
}

TEST(CVDisplayLink, ANullLinkTakesEveryCall) {
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
    std::vector<std::uint64_t> times;
    std::vector<std::uint64_t> others;
    CVDisplayLink other = make([&](CVDisplayLink& link, const CVTimeStamp& outputTime) {
        others.push_back(outputTime.hostTime);
        link.stop();
        return 0;
    });
    CVDisplayLink link = make([&](CVDisplayLink& self, const CVTimeStamp& outputTime) {
        times.push_back(outputTime.hostTime);
        other.stop();
        if (times.size() == 2) {
            self.stop();
            self.release();
        }
        return 0;
    });
    link.start();
    link.release();
    other.start();
    EXPECT_TRUE(times.empty());
    for (const double time : {2.25, 2.5, 2.75}) {
        clock.advanceTo(time);
    }
    EXPECT_EQ(times, (std::vector<std::uint64_t>{2250000000, 2500000000}));
    EXPECT_TRUE(others.empty()) << "stopped by the one before it";
}
