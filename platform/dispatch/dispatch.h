#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Whether the caller is on the process's first thread. Asked of the system each time.
ORVANE_EXPORT bool isMainThread();

// The main queue: serial, drained on the main thread by whichever loop the host runs (it is a source
// of GLib's default main context, so GTK's loop and an off-screen loop drain the same queue).
ORVANE_EXPORT void dispatchMainAsync(std::function<void()> work);
// Returns after the work has run. From the main thread it would wait for itself: callers ask
// isMainThread first.
ORVANE_EXPORT void dispatchMainSync(const std::function<void()>& work);
// A worker of the background queue. Never starved by workers that block.
ORVANE_EXPORT void dispatchBackgroundAsync(std::function<void()> work);

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
