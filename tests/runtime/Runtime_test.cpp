#include "orvane/runtime/Runtime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "orvane/system/system.h"
#include "platform/dispatch/dispatch.h"
#include "tests/runtime/TemporaryFolder.h"

namespace {

using orvane::Runtime;
using orvane::platform::DispatchSemaphore;
using orvane::tests::TemporaryUser;
using Clock = std::chrono::system_clock;

class RuntimeTest : public testing::Test {
protected:
    ~RuntimeTest() override { Runtime::DeleteInstance(); }

    // Runs the work as a task and waits for it: what it queues, it queues while the thread is busy.
    static void inTask(const std::function<void()>& work) {
        DispatchSemaphore done(0);
        Runtime::GetInstance()->run(
            [&] {
                work();
                done.signal();
            },
            0);
        done.wait();
    }

private:
    TemporaryUser user_;
};

TEST_F(RuntimeTest, TheInstanceIsOneUntilItIsDeleted) {
    Runtime::DeleteInstance();
    std::mutex mutex;
    std::set<Runtime*> instances;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                Runtime* const instance = Runtime::GetInstance();
                const std::lock_guard lock(mutex);
                instances.insert(instance);
            });
        }
    }
    EXPECT_EQ(instances.size(), 1U);
    Runtime::DeleteInstance();
    inTask([] {});
}

TEST_F(RuntimeTest, FoldersExistBeforeAnyTaskRuns) {
    inTask([] { EXPECT_TRUE(std::filesystem::exists(orvane::system::getCachesDirectory())); });
}

TEST_F(RuntimeTest, TasksRunByTimeAndThenInTheOrderOfQueueing) {
    std::vector<int> order;
    DispatchSemaphore done(0);
    inTask([&] {
        auto* const runtime = Runtime::GetInstance();
        runtime->run([&] { done.signal(); }, 60);
        runtime->run([&] { order.push_back(3); }, 30);
        for (int i = 0; i < 3; ++i) {
            runtime->run([&, i] { order.push_back(i); }, 0);
        }
    });
    done.wait();
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST_F(RuntimeTest, NoTaskRunsBeforeItsTime) {
    const auto start = Clock::now();
    Clock::time_point ran;
    DispatchSemaphore done(0);
    Runtime::GetInstance()->run(
        [&] {
            ran = Clock::now();
            done.signal();
        },
        20);
    done.wait();
    EXPECT_GE(ran - start, std::chrono::milliseconds(19));
}

TEST_F(RuntimeTest, AnEarlierTaskWakesTheThreadAndTheLongestDelayDoesNotWrap) {
    std::atomic<bool> ran = false;
    Runtime::GetInstance()->run([&] { ran = true; }, 4294967295U);
    inTask([] {});
    inTask([] {});
    EXPECT_FALSE(ran);
}

// The token is released by the thread itself, and not before the wait that follows its task.
TEST_F(RuntimeTest, WhatATaskCapturedOutlivesTheWaitAfterIt) {
    struct Token {
        Clock::time_point& released;
        ~Token() { released = Clock::now(); }
    };
    Clock::time_point released;
    Clock::time_point queued;
    DispatchSemaphore done(0);
    inTask([&] {
        queued = Clock::now();
        Runtime::GetInstance()->run([&] { done.signal(); }, 50);
        Runtime::GetInstance()->run([token = std::make_shared<Token>(released)] {}, 0);
    });
    done.wait();
    EXPECT_GE(released - queued, std::chrono::milliseconds(49));
}

TEST_F(RuntimeTest, DeletingRunsWhatIsDueAndDropsTheRest) {
    std::vector<int> order;
    const auto token = std::make_shared<int>();
    inTask([&] {
        auto* const runtime = Runtime::GetInstance();
        runtime->run([&, token] { order.push_back(2); }, 60000);
        runtime->run([&, token] { order.push_back(1); }, 0);
    });
    Runtime::DeleteInstance();
    EXPECT_EQ(order, std::vector{1});
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(RuntimeTest, AnEmptyFunctionStopsTheThreadForGood) {
    std::atomic<bool> ran = false;
    inTask([&] {
        Runtime::GetInstance()->run({}, 0);
        Runtime::GetInstance()->run([&] { ran = true; }, 0);
    });
    Runtime::DeleteInstance();
    EXPECT_FALSE(ran);
    inTask([] {});
}

TEST_F(RuntimeTest, ATaskCannotDeleteTheInstance) {
    Runtime* const before = Runtime::GetInstance();
    inTask([] { Runtime::DeleteInstance(); });
    EXPECT_EQ(Runtime::GetInstance(), before);
}

TEST_F(RuntimeTest, EveryTaskQueuedFromAnyThreadRunsOnce) {
    std::atomic<int> count = 0;
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < 200; ++i) {
                    const auto later = static_cast<unsigned int>((t + i) % 3);
                    Runtime::GetInstance()->run([&] { ++count; }, later);
                }
            });
        }
    }
    DispatchSemaphore done(0);
    Runtime::GetInstance()->run([&] { done.signal(); }, 10);
    done.wait();
    EXPECT_EQ(count, 800);
}

TEST_F(RuntimeTest, ATaskThatThrowsTerminatesTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(inTask([] { throw std::runtime_error("of a task"); }), "of a task");
}

}  // namespace
