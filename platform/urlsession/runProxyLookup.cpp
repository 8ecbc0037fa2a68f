#include "platform/urlsession/runProxyLookup.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/urlsession/AllSignalsBlocked.h"

namespace orvane::platform {

namespace {

// The lookups that are running.
class Lookups {
public:
    static Lookups& instance() {
        // Never destroyed, because a lookup may outlast the wait.
        static auto* const lookups = [] {
            std::atexit([] { instance().end(); });
            return new Lookups;
        }();
        return *lookups;
    }

    // Returns false if the process is exiting; otherwise leave() must follow.
    [[nodiscard]] bool enter() {
        const std::lock_guard lock(mutex_);
        running_ += ended_ ? 0 : 1;
        return !ended_;
    }
    void leave() {
        const std::lock_guard lock(mutex_);
        --running_;
        changed_.notify_all();
    }

private:
    void end() {
        std::unique_lock lock(mutex_);
        ended_ = true;
        changed_.wait_for(lock, std::chrono::seconds(1), [this] { return running_ == 0; });
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    int running_ = 0;
    bool ended_ = false;
};

}  // namespace

void runProxyLookup(std::function<void()> lookup) {
    if (!Lookups::instance().enter()) {
        return;
    }
    const AllSignalsBlocked blocked;
    std::thread([lookup = std::move(lookup)]() mutable {
        lookup();
        lookup = nullptr;  // what it owns ends before the process does
        Lookups::instance().leave();
    }).detach();
}

}  // namespace orvane::platform
