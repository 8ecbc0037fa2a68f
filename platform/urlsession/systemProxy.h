#pragma once

#include <string>

namespace orvane::platform {

// The proxy that the desktop's settings name for the server of this address (with its scheme), as
// "http://host:port" or "socks5h://host:port"; an answer holds for five seconds. Empty where none
// is to be used, and where the environment names proxies (http_proxy and its like): it has the last
// word, and libcurl reads it by itself.
//
// Any thread. It waits where the settings name a script that decides.
std::string systemProxy(const std::string& url);

}  // namespace orvane::platform
