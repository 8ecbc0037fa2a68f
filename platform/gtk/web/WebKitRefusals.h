#pragma once

#include <webkit/webkit.h>

namespace orvane::platform {

// Makes a view refuse what pages of an application do not get: permissions such as the position,
// the camera and notifications; downloads; the whole screen; and the entries of the context menu
// for these. What is refused has one line in the log.
void refusePowers(WebKitWebView* view);

}  // namespace orvane::platform
