#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/dispatch/NewestOnMain.h"

namespace orvane::platform {
namespace {

void run() {
    while (drainMainQueue()) {
    }
}

TEST(NewestOnMain, DeliversTheNewestValueOfEachTurn) {
    std::vector<int> received;
    const NewestOnMain<int> newest([&](int value) { received.push_back(value); });
    const auto sender = newest.sender();
    for (int value = 1; value <= 3; ++value) {
        sender.send(value);
    }
    EXPECT_TRUE(received.empty());
    EXPECT_TRUE(drainMainQueue());
    EXPECT_FALSE(drainMainQueue()) << "values in the queue do not add up";
    sender.send(4);
    run();
    EXPECT_EQ(received, (std::vector{3, 4}));
}

// Each value is the only reference to it: the thread sanitizer sees what two threads use.
TEST(NewestOnMain, TakesValuesFromAnyThread) {
    constexpr int kLast = 5000;
    int last = 0;
    bool isInOrder = true;
    const NewestOnMain<std::shared_ptr<int>> newest([&](const std::shared_ptr<int>& value) {
        isInOrder = isInOrder && *value > last;
        last = *value;
    });
    std::thread thread([sender = newest.sender()] {
        for (int value = 1; value <= kLast; ++value) {
            sender.send(std::make_shared<int>(value));
        }
    });
    while (last < kLast) {
        drainMainQueue(std::chrono::milliseconds(100));
    }
    thread.join();
    EXPECT_TRUE(isInOrder);
}

TEST(NewestOnMain, MayBeDestroyedAtAnyMoment) {
    const auto value = std::make_shared<int>(1);
    std::optional<NewestOnMain<std::shared_ptr<int>>> newest;
    newest.emplace([&](const std::shared_ptr<int>&) { newest.reset(); });
    const auto sender = newest->sender();
    sender.send(value);
    run();
    EXPECT_FALSE(newest);
    sender.send(value);
    run();
    EXPECT_EQ(value.use_count(), 1) << "nothing is kept";
}

}  // namespace
}  // namespace orvane::platform
