#include "orvane/thread/dispatch.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <utility>

#include "orvane/display/Display.h"
#include "orvane/runtime/Runtime.h"
#include "orvane/system/system.h"
#include "platform/dispatch/dispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace orvane::platform;
using orvane::Runtime;
using orvane::tests::TemporaryUser;
using orvane::thread::dispatch_background;
using orvane::thread::dispatch_main;

// Runs work on another thread and drains the main queue until the work has returned.
void drainWhile(const std::function<void()>& work) {
    std::atomic<bool> done = false;
    const std::jthread other([&] {
        work();
        done = true;
        dispatchMainAsync([] {});
    });
    while (!done) {
        drainMainQueue(std::chrono::seconds(60));
    }
    drainMainQueue();
}

TEST(Dispatch, OtherThreadsRunWorkOnTheMainThreadInOrderAndWaitForIt) {
    const std::function<void(const std::function<void()>&)> functions[] = {
        dispatch_main, dispatch_ui, dispatch_ui_sync};
    for (const auto& dispatch : functions) {
        drainWhile([&] {
            EXPECT_FALSE(isMainThread());
            bool ranOnMain = false;
            bool isInOrder = false;
            dispatch_ui_async([&] { isInOrder = !ranOnMain; });
            dispatch([&] { ranOnMain = isMainThread(); });
            EXPECT_TRUE(ranOnMain);
            EXPECT_TRUE(isInOrder);
            // The exception reaches the waiting caller.
            EXPECT_THROW(dispatch([] { throw 7; }), int);
        });
    }
}

TEST(Dispatch, LogsAnExceptionOfAsynchronousWorkAndContinues) {
    testing::internal::CaptureStderr();
    bool ran = false;
    drainWhile([&] {
        dispatch_ui_async([] { throw std::runtime_error("a reason"); });
        dispatch_ui_async([&] { ran = true; });
    });
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(ran);
    EXPECT_NE(log.find("Uncaught exception on the main queue: a reason"), std::string::npos) << log;
}

// Work that runs a loop of its own is not interrupted by the next work, which still wakes the loop
// afterward.
TEST(Dispatch, TheQueueIsSerialAcrossNestedLoops) {
    std::string order;
    dispatchMainAsync([&] {
        order += "begin ";
        dispatchMainAsync([&] { order += "next"; });
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        EXPECT_FALSE(drainMainQueue());
        order += "end ";
    });
    const auto iterate = [](bool byLoop) {
        return byLoop ? g_main_context_iteration(nullptr, FALSE) != FALSE : drainMainQueue();
    };
    for (const bool byLoop : {false, true}) {
        EXPECT_TRUE(iterate(byLoop));
    }
    EXPECT_EQ(order, "begin end next");
    EXPECT_FALSE(drainMainQueue());
}

// A source of the loop that is always ready, like input or a redraw that is due at once.
class ReadySource {
public:
    ReadySource(int priority, std::function<void()> work) : work_(std::move(work)) {
        id_ = g_idle_add_full(
            priority,
            [](void* self) -> gboolean {
                static_cast<ReadySource*>(self)->work_();
                return G_SOURCE_CONTINUE;
            },
            this, nullptr);
    }
    ~ReadySource() { g_source_remove(id_); }
    ReadySource(const ReadySource&) = delete;
    ReadySource& operator=(const ReadySource&) = delete;

private:
    std::function<void()> work_;
    unsigned id_;
};

// Input comes before work, and work before frames.
TEST(Dispatch, EndlessWorkAndEndlessFramesLeaveTimeForEachOther) {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    int pieces = 0;
    int frames = 0;
    int piecesSinceFrame = 0;
    bool isOver = false;
    // As an animation does that restarts in its completion, and one that never stops redrawing.
    const std::function<void()> restart = [&] {
        ++pieces;
        ++piecesSinceFrame;
        if (!isOver) {
            dispatchMainAsync(restart);
        }
    };
    dispatchMainAsync(restart);
    const ReadySource redraw(G_PRIORITY_HIGH_IDLE + 20,  // GTK's priority
                             [&] { frames += std::exchange(piecesSinceFrame, 0) > 0 ? 1 : 0; });
    {
        const ReadySource input(G_PRIORITY_DEFAULT, [] {});
        g_main_context_iteration(nullptr, FALSE);
        EXPECT_EQ(pieces, 0);
    }
    g_main_context_iteration(nullptr, FALSE);
    EXPECT_EQ(pieces, 1);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (frames < 5 && std::chrono::steady_clock::now() < deadline) {
        g_main_context_iteration(nullptr, FALSE);
    }
    EXPECT_GE(frames, 5) << pieces << " pieces of work";
    isOver = true;
    drainMainQueue();
}

TEST(Dispatch, BlockedWorkersDoNotDelayOtherWork) {
    constexpr int blocked = 64;
    std::latch started(blocked);
    std::latch release(1);
    std::latch finished(blocked);
    for (int i = 0; i < blocked; ++i) {
        dispatch_background([&] {
            EXPECT_FALSE(isMainThread());
            started.count_down();
            release.wait();
            finished.count_down();
        });
    }
    started.wait();
    for (int i = 0; i < 100; ++i) {
        // Destroyed as soon as its wait has returned.
        DispatchSemaphore shortWork(0);
        dispatch_background([&] { shortWork.signal(); });
        shortWork.wait();
    }
    release.count_down();
    finished.wait();
}

// Each case ends a child process in its own way.
class DispatchAtExit : public testing::Test {
protected:
    DispatchAtExit() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        alarm(60);  // A hang kills the process and fails the case.
    }
    ~DispatchAtExit() override { alarm(0); }

    const TemporaryUser user_;
};

TEST_F(DispatchAtExit, ATimedTaskThatWaitsForTheMainThreadRunsItsWorkItself) {
    const auto leave = [](bool exitBeforeTheCall) {
        DispatchSemaphore inside(0);
        const auto task = [&] {
            inside.signal();
            dispatch_main([] { dispatch_main([] { std::fputs("ran\n", stderr); }); });
        };
        Runtime::GetInstance()->run(task, 0);
        if (exitBeforeTheCall) {
            inside.wait();
        }
        std::exit(0);
    };
    for (const bool exitBeforeTheCall : {false, true}) {
        EXPECT_EXIT(leave(exitBeforeTheCall), testing::ExitedWithCode(0), "ran");
    }
}

TEST_F(DispatchAtExit, DoesNotWaitForBlockedWorkers) {
    const auto leave = [] {
        DispatchSemaphore started(0);
        DispatchSemaphore never(0);
        for (const bool forMain : {true, false}) {
            dispatch_background([&, forMain] {
                started.signal();
                forMain ? dispatch_main([] { std::fputs("ran\n", stderr); }) : never.wait();
            });
        }
        started.wait();
        started.wait();
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "^$");
}

// The exit handlers run on the worker, and the display's destructor waits for the main thread.
TEST_F(DispatchAtExit, AWorkerMayEndTheProcess) {
    const auto leave = [] {
        orvane::display::Display::instance();
        dispatch_background([] { orvane::system::exit(); });
        for (;;) {
            g_main_context_iteration(nullptr, TRUE);
        }
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

}  // namespace
