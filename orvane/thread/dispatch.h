#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::thread {

// Runs the function on the main thread: inline when called there, otherwise by the main queue, and
// returns after it has run. Hold no lock that the main thread may want. An empty function raises
// std::bad_function_call.
ORVANE_EXPORT void dispatch_main(std::function<void()> function);

// Hands the function to the background queue and returns at once, from any thread.
ORVANE_EXPORT void dispatch_background(std::function<void()> function);

}  // namespace orvane::thread

// The doors of the platform-facing code to the main thread: all view, layer and control work goes
// through them. On the main thread all three run the block at once. Elsewhere the first two wait
// for the main queue and the last does not: that is all that "async" means here.
ORVANE_EXPORT void dispatch_ui(const std::function<void()>& block);
ORVANE_EXPORT void dispatch_ui_sync(const std::function<void()>& block);
ORVANE_EXPORT void dispatch_ui_async(std::function<void()> block);
