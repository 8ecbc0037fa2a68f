#include "orvane/thread/dispatch.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

#include "orvane/runtime/Runtime.h"
#include "orvane/system/system.h"
#include "platform/dispatch/dispatch.h"
#include "tests/runtime/TemporaryFolder.h"

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

TEST(Dispatch, OnTheMainThreadAllDoorsRunInlineAndNest) {
    const std::function<void(const std::function<void()>&)> doors[] = {
        dispatch_main, dispatch_ui, dispatch_ui_sync, dispatch_ui_async};
    for (const auto& door : doors) {
        std::string order;
        door([&] {
            order += "a";
            door([&] { order += "b"; });
            order += "c";
        });
        EXPECT_EQ(order, "abc");
        EXPECT_THROW(door({}), std::bad_function_call);
    }
}

TEST(Dispatch, FromElsewhereTheWorkRunsOnTheMainThreadBeforeTheCallReturns) {
    const std::function<void(const std::function<void()>&)> doors[] = {dispatch_main, dispatch_ui,
                                                                       dispatch_ui_sync};
    for (const auto& door : doors) {
        drainWhile([&] {
            EXPECT_FALSE(isMainThread());
            bool ranOnMain = false;
            door([&] { ranOnMain = isMainThread(); });
            EXPECT_TRUE(ranOnMain);
            // What it throws reaches the waiting caller.
            EXPECT_THROW(door({}), std::bad_function_call);
            EXPECT_THROW(door([] { throw 7; }), int);
        });
    }
}

TEST(Dispatch, WhatAsynchronousWorkThrowsIsLoggedAndTheQueueGoesOn) {
    testing::internal::CaptureStderr();
    bool ran = false;
    drainWhile([&] {
        dispatch_ui_async([] { throw std::runtime_error("a reason"); });
        dispatch_ui_async([] { throw 7; });
        dispatch_ui_async({});
        dispatch_ui_async([&] { ran = true; });
    });
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(ran);
    for (const char* reason : {"a reason", "unknown exception", "bad_function_call"}) {
        EXPECT_NE(log.find(std::string("Uncaught exception on the main queue: ") + reason),
                  std::string::npos)
            << log;
    }
}

TEST(Dispatch, WorkOfOneThreadRunsInTheOrderOfItsCalls) {
    std::vector<std::vector<int>> orders(4);
    drainWhile([&] {
        std::vector<std::jthread> threads;
        for (auto& order : orders) {
            threads.emplace_back([&] {
                for (int i = 0; i < 100; ++i) {
                    const auto work = [&, i] { order.push_back(i); };
                    i % 10 == 9 ? dispatch_ui_sync(work) : dispatch_ui_async(work);
                }
            });
        }
    });
    for (const auto& order : orders) {
        ASSERT_EQ(order.size(), 100U);
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    }
}

TEST(Dispatch, ALoopOfTheDesktopDrainsTheQueue) {
    bool ran = false;
    const std::jthread other([&] { dispatch_ui_sync([&] { ran = true; }); });
    while (!ran) {
        g_main_context_iteration(nullptr, TRUE);
    }
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

// Each ends the process that the case runs in, with threads in the way.
class DispatchAtExit : public testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // A hang kills the process and fails the case.
    static void inTask(const std::function<void()>& work) {
        alarm(60);
        Runtime::GetInstance()->run(work, 0);
    }

private:
    TemporaryUser user_;
};

TEST_F(DispatchAtExit, ATaskThatWaitsForTheMainThreadRunsItsWorkItself) {
    const auto leave = [](bool exitBeforeTheCall) {
        DispatchSemaphore inside(0);
        inTask([&] {
            inside.signal();
            dispatch_main([] { dispatch_main([] { std::fputs("ran\n", stderr); }); });
        });
        if (exitBeforeTheCall) {
            inside.wait();
        }
        std::exit(0);
    };
    for (const bool exitBeforeTheCall : {false, true}) {
        EXPECT_EXIT(leave(exitBeforeTheCall), testing::ExitedWithCode(0), "ran");
    }
}

TEST_F(DispatchAtExit, ATaskMayEndTheProcessHereOrOnTheMainThreadWithoutWaiting) {
    const auto leave = [](bool onMainThread) {
        inTask(
            [=] { onMainThread ? dispatch_main(orvane::system::exit) : orvane::system::exit(); });
        for (;;) {
            drainMainQueue(std::chrono::seconds(60));
        }
    };
    for (const bool onMainThread : {false, true}) {
        EXPECT_EXIT(leave(onMainThread), testing::ExitedWithCode(0), "");
    }
}

TEST_F(DispatchAtExit, WorkersThatWaitAreLeftBehind) {
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

TEST_F(DispatchAtExit, AnEmptyFunctionInTheBackgroundTerminatesTheProcess) {
    const auto leave = [] {
        alarm(60);
        dispatch_background({});
        pause();
    };
    EXPECT_DEATH(leave(), "bad_function_call");
}

}  // namespace
