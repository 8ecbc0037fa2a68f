#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Groups the animations that are added to layers while it is open. Transactions nest; each thread
// has a stack of its own, and an animation belongs to all that are open where it is added.
class ORVANE_EXPORT CATransaction {
public:
    static void begin();
    // Closes the innermost transaction; without one it does nothing.
    static void commit();
    // For the innermost transaction; without one it does nothing. Runs exactly once, on the main
    // thread, from the main loop or at the beginning of a display pass: after the commit, and when
    // every animation added in it, nested transactions included, has ended, been replaced or been
    // removed. What it throws is logged.
    static void setCompletionBlock(std::function<void()> block);
};

}  // namespace orvane::platform
