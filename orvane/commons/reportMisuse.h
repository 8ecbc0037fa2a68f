#pragma once

#include "orvane/commons/Export.h"

namespace orvane::commons {

// Reports a mistake of the application, such as a child that cannot be stored: one line on standard
// error. For the model, which cannot name the platform's log. `operation` is the function that was
// called, `consequence` what it did instead. Thread-safe.
ORVANE_EXPORT void reportMisuse(const char* operation, const char* consequence);

}  // namespace orvane::commons
