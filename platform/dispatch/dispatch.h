#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Whether the caller is on the process's first thread. Asked of the system each time.
ORVANE_EXPORT bool isMainThread();

// The main queue: serial, first in first out, drained on the main thread by whichever loop the host
// runs (it is a source of GLib's default main context, so GTK's loop and an off-screen loop drain
// the same queue). A loop that runs inside a piece of its work waits with the rest of the queue.

// What the work throws is logged, and the loop goes on.
ORVANE_EXPORT void dispatchMainAsync(std::function<void()> work);
// Returns after the work has run; what it throws comes out here. From the main thread it would wait
// for itself: callers ask isMainThread first.
ORVANE_EXPORT void dispatchMainSync(const std::function<void()>& work);

// For a host that runs no loop, and for tests; on the main thread. Runs what is on the main queue
// now and returns whether that was anything. What this work adds is left for the next call.
// `patience` is how long to wait for the first piece when there is none.
ORVANE_EXPORT bool drainMainQueue(std::chrono::milliseconds patience = {});

// Says that nobody will drain the main queue any more, so that no thread that the main thread joins
// on its way out waits for it. A host calls it on the main thread when its loop has ended; the
// library does so at exit. Nothing on the queue runs afterwards, and asynchronous work is dropped.
// A synchronous caller runs its work itself, one caller at a time, except on an UnjoinedThread:
// there the call never returns, as code that was stopped by the end of the process.
ORVANE_EXPORT void closeMainQueue();

// Says, for a scope, that nobody joins the calling thread; see closeMainQueue. So it is with the
// workers of the background queue and the threads of display links.
class ORVANE_EXPORT UnjoinedThread {
public:
    UnjoinedThread();
    ~UnjoinedThread();
    UnjoinedThread(const UnjoinedThread&) = delete;
    UnjoinedThread& operator=(const UnjoinedThread&) = delete;

    // Whether the caller is within such a scope.
    static bool isCurrent();
};

// A worker of the background queue. Never starved by workers that block. Work that throws
// terminates the process.
ORVANE_EXPORT void dispatchBackgroundAsync(std::function<void()> work);

// Counts signals for waiters; from any threads. It may be destroyed as soon as its last wait has
// returned.
class ORVANE_EXPORT DispatchSemaphore {
public:
    explicit DispatchSemaphore(long count);
    ~DispatchSemaphore();
    void signal();
    void wait();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace orvane::platform
