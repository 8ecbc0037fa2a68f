#include "platform/dispatch/BackgroundQueue.h"

#include <glib.h>

#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

// Far more than an application's requests in flight, and far fewer threads than a system refuses.
constexpr int maximumWorkers = 1024;

}  // namespace

BackgroundQueue& BackgroundQueue::shared() {
    static auto& queue = *new BackgroundQueue;
    return queue;
}

BackgroundQueue::BackgroundQueue()
    : pool_(g_thread_pool_new(
          [](gpointer, gpointer queue) { static_cast<BackgroundQueue*>(queue)->runNext(); }, this,
          maximumWorkers, FALSE, nullptr)) {}

void BackgroundQueue::async(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        work_.push_back(std::move(work));
    }
    // The pool takes a ticket for one piece of work, not the work: the lock above is what orders
    // the two threads' accesses to it.
    GError* error = nullptr;
    if (!g_thread_pool_push(pool_, this, &error)) {
        // The ticket is kept, and the next worker that is free takes it.
        NSLog("The background queue cannot grow: %s", error->message);
        g_error_free(error);
    }
}

// noexcept: what the work throws has no caller to go to and ends the process.
void BackgroundQueue::runNext() noexcept {
    std::function<void()> work;
    {
        const std::lock_guard lock(mutex_);
        work = std::move(work_.front());
        work_.pop_front();
    }
    // Ends with the work and what it captured: then other pools of the process may get the thread.
    const UnjoinedThread unjoined;
    work();
    work = nullptr;
}

}  // namespace orvane::platform
