#include "orvane/runtime/Runtime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "platform/dispatch/dispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using orvane::Runtime;
using orvane::platform::DispatchSemaphore;
using orvane::tests::TemporaryUser;

class RuntimeTest : public testing::Test {
protected:
    ~RuntimeTest() override { Runtime::DeleteInstance(); }

    // Runs the work as a task and waits for it. Tasks that the work queues meet a busy thread.
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

TEST_F(RuntimeTest, AllThreadsShareOneInstanceThatRunsEachTaskOnce) {
    Runtime::DeleteInstance();
    std::array<Runtime*, 4> instances{};
    std::atomic<int> count = 0;
    {
        std::vector<std::jthread> threads;
        for (Runtime*& instance : instances) {
            threads.emplace_back([&] {
                instance = Runtime::GetInstance();
                for (unsigned int i = 0; i < 200; ++i) {
                    instance->run([&] { ++count; }, i % 3);
                }
            });
        }
    }
    EXPECT_EQ(std::ranges::count(instances, Runtime::GetInstance()), 4);
    DispatchSemaphore done(0);
    Runtime::GetInstance()->run([&] { done.signal(); }, 10);
    done.wait();
    EXPECT_EQ(count, 800);
}

TEST_F(RuntimeTest, RunsTasksByTimeAndThenInTheOrderOfQueueing) {
    std::vector<int> order;
    DispatchSemaphore done(0);
    const auto start = std::chrono::system_clock::now();
    inTask([&] {
        auto* const runtime = Runtime::GetInstance();
        runtime->run(
            [&] {
                order.push_back(3);
                done.signal();
            },
            500);
        for (int i = 0; i < 3; ++i) {
            runtime->run([&, i] { order.push_back(i); }, 0);
        }
    });
    done.wait();
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
    EXPECT_GE(std::chrono::system_clock::now() - start, std::chrono::milliseconds(499));
}

TEST_F(RuntimeTest, AnEarlierTaskWakesTheThreadAndTheLongestDelayDoesNotOverflow) {
    std::atomic<bool> ran = false;
    Runtime::GetInstance()->run([&] { ran = true; }, 4294967295U);
    inTask([] {});
    inTask([] {});
    EXPECT_FALSE(ran);
}

TEST_F(RuntimeTest, DeletingRunsDueTasksAndDropsTheOthers) {
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

TEST_F(RuntimeTest, StopsOnceAndNotFromATask) {
    Runtime* const runtime = Runtime::GetInstance();
    inTask([&] { runtime->stop(); });
    runtime->stop();
    EXPECT_NO_THROW(runtime->stop());
}

TEST_F(RuntimeTest, ATaskCannotDeleteTheInstance) {
    Runtime* const before = Runtime::GetInstance();
    inTask([] { Runtime::DeleteInstance(); });
    EXPECT_EQ(Runtime::GetInstance(), before);
}

}  // namespace
