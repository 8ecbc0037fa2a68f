#pragma once

#include <glib.h>

namespace orvane::platform {

// Compares names of header fields, in which case is ignored.
inline bool isSameHeaderName(const char* a, const char* b) {
    return g_ascii_strcasecmp(a, b) == 0;
}

}  // namespace orvane::platform
