#pragma once

#include <functional>

namespace orvane::platform {

// Runs a lookup of a proxy on a thread of its own. A lookup may load libraries, which must not
// happen while the process unloads its own: libraries that are initialized a second time abort. So
// the exit of the process waits for the lookups that are running, up to a second, and a lookup that
// is requested later is not run.
//
// Thread-safe.
void runProxyLookup(std::function<void()> lookup);

}  // namespace orvane::platform
