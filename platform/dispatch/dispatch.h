#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Returns whether the caller is on the process's first thread. Queries the system at each call.
ORVANE_EXPORT bool isMainThread();

// The main queue runs work on the main thread, one piece after another, in the order in which it
// was queued. It is a source of GLib's default main context: GTK's loop and an off-screen loop
// drain the same queue. A loop that runs inside a piece of work does not drain the queue.
//
// The queue's work comes after input and before the display's frames, but only for a limited time
// at a stretch; see QueueTurns.

// Queues the work and returns at once. If the work throws, the exception is logged.
ORVANE_EXPORT void dispatchMainAsync(std::function<void()> work);
// Queues the work and returns after it has run. If it throws, the exception reaches the caller.
// Must not be called on the main thread, which would wait for itself: see isMainThread.
ORVANE_EXPORT void dispatchMainSync(const std::function<void()>& work);

// Runs the work that is on the main queue now and returns whether there was any. Work that this
// work queues is left for the next call. If the queue is empty, waits up to `patience` for the
// first piece. For hosts that run no loop, and for tests. Main thread only.
ORVANE_EXPORT bool drainMainQueue(std::chrono::milliseconds patience = {});

// Closes the main queue for good, so that threads which the main thread joins at the end of the
// process do not wait for a queue that nothing drains. A host may call it on the main thread when
// its loop has ended; the library calls it in an exit handler, on the thread that called exit().
//
// Work on a closed queue does not run. dispatchMainAsync drops its work. dispatchMainSync runs it
// on the calling thread, one caller at a time; on an UnjoinedThread other than the one that closed
// the queue it never returns, because the process is about to end.
ORVANE_EXPORT void closeMainQueue();

// Marks the calling thread, while this object exists, as one that nothing joins at the end of the
// process; see closeMainQueue. The workers of the background queue are such threads.
class ORVANE_EXPORT UnjoinedThread {
public:
    UnjoinedThread();
    ~UnjoinedThread();
    UnjoinedThread(const UnjoinedThread&) = delete;
    UnjoinedThread& operator=(const UnjoinedThread&) = delete;

    // Returns whether the calling thread is marked.
    static bool isCurrent();
};

// Queues the work for a background thread and returns at once. Any thread. Workers that block do
// not delay other work. If the work throws, the process terminates.
ORVANE_EXPORT void dispatchBackgroundAsync(std::function<void()> work);

// Counts signals; each wait consumes one. Any thread may call either operation. The semaphore may
// be destroyed as soon as its last wait has returned, even if signal() has not returned yet.
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
