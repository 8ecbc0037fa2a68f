#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace orvane::tests {

// Something that one thread waits for and another brings about, at most once. A wait gives up, and
// the test with it, long after anything healthy would have happened.
class Latch {
public:
    void open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        opened_.notify_all();
    }
    void wait() {
        std::unique_lock lock(mutex_);
        EXPECT_TRUE(opened_.wait_for(lock, std::chrono::seconds(60), [this] { return open_; }));
    }
    [[nodiscard]] bool isOpen() {
        const std::lock_guard lock(mutex_);
        return open_;
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool open_ = false;
};

}  // namespace orvane::tests
