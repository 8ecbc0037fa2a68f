#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

#include "platform/appkit/NSView.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CATransaction.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CATransaction;
using platform::CVDisplayLink;

// A window whose only view changes whenever the application is called.
class Fairness : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(desktop::connect());
        window_ = std::make_unique<TestWindow>(platform::CGSize{200, 100});
        view_ = makePattern({{0, 0}, {200, 100}}, {1, 0, 0, 1});
        window_->window().setContentView(view_);
        window_->show();
    }

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

    std::unique_ptr<TestWindow> window_;
    std::shared_ptr<PatternView> view_;
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

TEST_F(Fairness, WorkThatQueuesItselfDoesNotStopFrames) {
    bool isOver = false;
    const std::function<void()> repeat = [&] {
        if (!isOver) {
            call();
            platform::dispatchMainAsync(repeat);
        }
    };
    platform::dispatchMainAsync(repeat);
    expectFramesAndWork();
    isOver = true;
    platform::drainMainQueue();
}

TEST_F(Fairness, AnAnimationThatItsCompletionRestartsDoesNotStopFrames) {
    bool isOver = false;
    const std::function<void()> restart = [&] {
        if (!isOver) {
            call();
            CATransaction::begin();
            CATransaction::setCompletionBlock(restart);
            CATransaction::commit();
        }
    };
    restart();
    expectFramesAndWork();
    isOver = true;
    const int after = calls_;
    EXPECT_TRUE(desktop::runUntil([&] { return !window_->window().needsDisplay(); }));
    EXPECT_EQ(calls_, after);
}

}  // namespace

}  // namespace orvane::tests
