#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The desktop around the process.
class ORVANE_EXPORT NSWorkspace {
public:
    // Opens an address with the desktop's preferred application. False when the address is
    // malformed or nothing could be started. Any thread.
    static bool openURL(const std::string& url);
};

}  // namespace orvane::platform
