#pragma once

#include <webkit/webkit.h>

#include <string>

namespace orvane::platform {

// Creates a view that keeps what pages store in a folder; in memory, for this view alone, if the
// path is empty. The views with the same folder share it. The caller owns the reference.
[[nodiscard]] WebKitWebView* createWebKitView(const std::string& dataFolder);

}  // namespace orvane::platform
