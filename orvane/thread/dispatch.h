#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::thread {

// Runs the function on the main thread and returns after it has run: a direct call if the caller is
// on the main thread, otherwise through the main queue. What the function throws reaches the
// caller; an empty function throws std::bad_function_call. The caller must hold no lock that the
// main thread may wait for.
ORVANE_EXPORT void dispatch_main(std::function<void()> function);

// Queues the function for a background thread and returns at once. Any thread, including the main
// thread. If the function throws (an empty one does), the process terminates.
ORVANE_EXPORT void dispatch_background(std::function<void()> function);

}  // namespace orvane::thread

// How the platform-bound code reaches the main thread: all work on views, layers and controls goes
// through these functions. On the main thread each of them runs the block directly. On another
// thread, dispatch_ui and dispatch_ui_sync wait until the main queue has run it;
// dispatch_ui_async does not wait.
ORVANE_EXPORT void dispatch_ui(const std::function<void()>& block);
// The same as dispatch_ui.
ORVANE_EXPORT void dispatch_ui_sync(const std::function<void()>& block);
// Note that on the main thread the block has run when this function returns.
ORVANE_EXPORT void dispatch_ui_async(std::function<void()> block);
