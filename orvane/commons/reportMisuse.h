#pragma once

#include "orvane/commons/Export.h"

namespace orvane::commons {

// Writes one line about a mistake of the application, such as a child that cannot be stored, to
// standard error. The model calls this function because it cannot name the platform's log.
// `operation` is the function that was called, `consequence` says what it did instead. Thread-safe.
ORVANE_EXPORT void reportMisuse(const char* operation, const char* consequence);

}  // namespace orvane::commons
