#include "platform/dispatch/BackgroundQueue.h"

#include <glib.h>

#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

// Well above the number of requests that an application has in flight, and well below the number of
// threads that a system allows.
constexpr int kMaximumWorkers = 1024;

}  // namespace

BackgroundQueue& BackgroundQueue::shared() {
    static auto& queue = *new BackgroundQueue;
    return queue;
}

BackgroundQueue::BackgroundQueue()
    : pool_(g_thread_pool_new(
          [](gpointer, gpointer queue) { static_cast<BackgroundQueue*>(queue)->runNext(); }, this,
          kMaximumWorkers, FALSE, nullptr)) {}

void BackgroundQueue::async(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        work_.push_back(std::move(work));
    }
    // The pool receives a token for one piece of work instead of the work: the work is passed under
    // the mutex, which orders the two threads' accesses to it.
    GError* error = nullptr;
    if (!g_thread_pool_push(pool_, this, &error)) {
        // The pool keeps the token, and the next free worker takes it.
        NSLog("The background queue cannot grow: %s", error->message);
        g_error_free(error);
    }
}

// noexcept, because an exception of the work has no caller to reach: the process terminates.
void BackgroundQueue::runNext() noexcept {
    std::function<void()> work;
    {
        const std::lock_guard lock(mutex_);
        work = std::move(work_.front());
        work_.pop_front();
    }
    // Covers the destruction of the captures, too. Afterward GLib may give the thread to another
    // pool.
    const UnjoinedThread unjoined;
    work();
    work = nullptr;
}

}  // namespace orvane::platform
