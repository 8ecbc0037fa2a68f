#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

// One line for the developer on standard error, in printf's format, with a time stamp before it.
// From any thread; lines do not mix.
[[gnu::format(printf, 1, 2)]] ORVANE_EXPORT void NSLog(const char* format, ...);

}  // namespace orvane::platform
