#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Services of the desktop on which the process runs.
class ORVANE_EXPORT NSWorkspace {
public:
    // Opens a URL with the application that the desktop prefers for its scheme. Returns false if
    // the URL is malformed or no application could be started. Thread-safe.
    static bool openURL(const std::string& url);
};

}  // namespace orvane::platform
