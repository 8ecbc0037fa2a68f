#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Writes one line for developers to standard error: a time stamp, the process and thread ids, and
// the message, formatted as by printf. Thread-safe; lines of several threads do not mix.
[[gnu::format(printf, 1, 2)]] ORVANE_EXPORT void NSLog(const char* format, ...);

}  // namespace orvane::platform
