#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Groups the animations that are added to layers between begin() and commit(). Transactions nest.
// Each thread has its own stack of transactions, and an animation belongs to all transactions that
// are open on the thread that adds it.
class ORVANE_EXPORT CATransaction {
public:
    static void begin();
    // Closes the innermost transaction. Does nothing if none is open.
    static void commit();
    // Sets the completion of the innermost transaction. Does nothing if none is open. The block is
    // called exactly once, on the main thread, from the main loop or at the start of a display
    // pass, after the commit and after every animation of the transaction and of the transactions
    // nested in it has ended, was replaced or was removed. An exception from the block is logged.
    static void setCompletionBlock(std::function<void()> block);
};

}  // namespace orvane::platform
