#pragma once

#include <deque>
#include <functional>
#include <mutex>

typedef struct _GThreadPool GThreadPool;

namespace orvane::platform {

// Implements dispatchBackgroundAsync on a GLib thread pool: work that finds no idle worker starts a
// new one, and idle workers end after some seconds. There is one queue per process. It is never
// destroyed, so a worker that blocks does not delay the end of the process.
class BackgroundQueue {
public:
    static BackgroundQueue& shared();

    // Any thread.
    void async(std::function<void()> work);

private:
    BackgroundQueue();

    void runNext() noexcept;

    std::mutex mutex_;
    std::deque<std::function<void()>> work_;
    GThreadPool* pool_;
};

}  // namespace orvane::platform
