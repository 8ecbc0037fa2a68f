#include "orvane/thread/dispatch.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <latch>
#include <thread>

#include "orvane/runtime/Runtime.h"
#include "platform/dispatch/dispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace orvane::platform;
using orvane::Runtime;
using orvane::tests::TemporaryUser;
using orvane::thread::dispatch_background;
using orvane::thread::dispatch_main;

// Drains the main queue until another thread has done its work.
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

TEST(Dispatch, FromElsewhereTheWorkRunsOnTheMainThreadInItsOrderBeforeTheCallReturns) {
    const std::function<void(const std::function<void()>&)> doors[] = {dispatch_main, dispatch_ui,
                                                                       dispatch_ui_sync};
    for (const auto& door : doors) {
        drainWhile([&] {
            EXPECT_FALSE(isMainThread());
            bool ranOnMain = false;
            bool isInOrder = false;
            dispatch_ui_async([&] { isInOrder = !ranOnMain; });
            door([&] { ranOnMain = isMainThread(); });
            EXPECT_TRUE(ranOnMain);
            EXPECT_TRUE(isInOrder);
            // What it throws reaches the waiting caller.
            EXPECT_THROW(door([] { throw 7; }), int);
        });
    }
}

TEST(Dispatch, WhatAsynchronousWorkThrowsIsLoggedAndTheQueueGoesOn) {
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

// A piece of work that waits in a loop of its own does not let the next one in, and what came
// meanwhile still wakes the loop afterwards.
TEST(Dispatch, TheQueueIsSerialAcrossNestedLoops) {
    std::string order;
    dispatchMainAsync([&] {
        order += "a";
        dispatchMainAsync([&] { order += "b"; });
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        EXPECT_FALSE(drainMainQueue());
        order += "c";
    });
    const auto iterate = [](bool byLoop) {
        return byLoop ? g_main_context_iteration(nullptr, FALSE) != FALSE : drainMainQueue();
    };
    for (const bool byLoop : {false, true}) {
        EXPECT_TRUE(iterate(byLoop));
    }
    EXPECT_EQ(order, "acb");
    EXPECT_FALSE(drainMainQueue());
}

TEST(Dispatch, BlockedWorkersDoNotHoldShortWorkBack) {
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
        // Goes as soon as its wait has returned.
        DispatchSemaphore shortWork(0);
        dispatch_background([&] { shortWork.signal(); });
        shortWork.wait();
    }
    release.count_down();
    finished.wait();
}

TEST(DispatchAtExit, ATaskThatWaitsForTheMainThreadRunsItsWorkItself) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const TemporaryUser user;
    const auto leave = [](bool exitBeforeTheCall) {
        alarm(60);  // A hang kills the process and fails the case.
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

TEST(DispatchAtExit, WorkersThatWaitAreLeftBehind) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leave = [] {
        alarm(60);
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

}  // namespace
