#pragma once

#include <glib.h>

namespace orvane::platform {

// Names of header fields are the same in whatever case.
inline bool isSameHeaderName(const char* a, const char* b) {
    return g_ascii_strcasecmp(a, b) == 0;
}

}  // namespace orvane::platform
