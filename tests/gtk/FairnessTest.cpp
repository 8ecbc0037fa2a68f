#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "platform/corevideo/CVDisplayLink.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CATransaction.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CATransaction;
using platform::CVDisplayLink;

// A view that changes whenever the application is called.
class Fairness : public WindowTest {
protected:
    Fairness() { window_.show(); }

    // A call of the application that takes 2 ms.
    void call() {
        using Clock = std::chrono::steady_clock;
        for (const auto end = Clock::now() + std::chrono::milliseconds(2); Clock::now() < end;) {
        }
        ++calls_;
        view_->setNeedsDisplayInRect(view_->bounds());
    }

    // Runs the loop until the window has shown ten frames and another thread, like a timed task or
    // the answer of a server, has had five pieces of work done on the main thread.
    void expectFramesAndWork() {
        std::atomic<int> pieces = 0;
        const std::jthread other([&pieces] {
            for (int i = 0; i < 5; ++i) {
                platform::dispatchMainSync([&pieces] { ++pieces; });
            }
        });
        const int before = view_->drawCount;
        EXPECT_TRUE(desktop::runUntil([&] {
            return view_->drawCount >= before + 10 && pieces == 5;
        })) << view_->drawCount - before
            << " frames, " << pieces << " pieces of work";
        platform::drainMainQueue();
    }

    std::shared_ptr<PatternView> view_ = add({{0, 0}, {200, 100}}, {1, 0, 0, 1});
    int calls_ = 0;
};

TEST_F(Fairness, DisplayLinksThatFillARefreshAreCalledOncePerFrame) {
    std::array<CVDisplayLink, 12> links;
    for (CVDisplayLink& link : links) {
        CVDisplayLink::createWithMainDisplay(link);
        link.setOutputCallback([this](CVDisplayLink&, const platform::CVTimeStamp&) {
            call();
            return 0;
        });
        link.start();
    }
    const int before = view_->drawCount;
    expectFramesAndWork();
    EXPECT_LE(calls_, static_cast<int>(links.size()) * (view_->drawCount - before + 1));
    for (CVDisplayLink& link : links) {
        link.stop();
    }
}

// Work in the main queue, and an animation that its completion restarts.
TEST_F(Fairness, WorkThatSchedulesItselfDoesNotStopFrames) {
    using Work = std::function<void()>;
    const std::function<void(const Work&)> ways[] = {platform::dispatchMainAsync,
                                                     [](const Work& work) {
                                                         CATransaction::begin();
                                                         CATransaction::setCompletionBlock(work);
                                                         CATransaction::commit();
                                                     }};
    for (const auto& schedule : ways) {
        bool isOver = false;
        const Work repeat = [&] {
            if (!isOver) {
                call();
                schedule(repeat);
            }
        };
        repeat();
        expectFramesAndWork();
        isOver = true;
        platform::drainMainQueue();
        EXPECT_TRUE(desktop::runUntil([&] { return !window_.window().needsDisplay(); }));
    }
}

}  // namespace

}  // namespace orvane::tests
