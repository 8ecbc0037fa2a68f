#pragma once

#include <chrono>

#include "orvane/commons/Export.h"

namespace orvane::platform {
class OffscreenWindow;
}

namespace orvane::embedding {

// Runs what waits in GLib's default main context, the main queue among it, and paints the window,
// until nothing is left of either except what an animation repaints in its next frame. Does not
// wait for timed tasks or other threads. Gives up after `patience`, for an application that keeps
// giving itself new work, and as soon as `cancelled` is true. Returns whether nothing was left.
// Main thread only.
ORVANE_EXPORT bool settle(platform::OffscreenWindow& window,
                          std::chrono::milliseconds patience = std::chrono::seconds(2),
                          const bool* cancelled = nullptr);

}  // namespace orvane::embedding
