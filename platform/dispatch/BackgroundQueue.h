#pragma once

#include <deque>
#include <functional>
#include <mutex>

typedef struct _GThreadPool GThreadPool;

namespace orvane::platform {

// The queue behind dispatchBackgroundAsync, on GLib's thread pool: work that finds no idle worker
// gets a new one, and workers that stay idle end after some seconds. One a process, never
// destroyed: a worker that blocks at exit just ends with the process.
class BackgroundQueue {
public:
    static BackgroundQueue& shared();

    void async(std::function<void()> work);

private:
    BackgroundQueue();

    void runNext() noexcept;

    std::mutex mutex_;
    std::deque<std::function<void()>> work_;
    GThreadPool* pool_;
};

}  // namespace orvane::platform
