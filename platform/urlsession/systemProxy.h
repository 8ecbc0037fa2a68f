#pragma once

#include <string>

namespace orvane::platform {

// Returns the proxy that the desktop's settings name for the server of this http or https address,
// as "http://host:port" or "socks5h://host:port". The result is empty if no proxy is to be used, or
// if the environment names proxies (http_proxy and similar): those take precedence, and libcurl
// reads them.
//
// Thread-safe. It blocks while the settings' automatic configuration script is loaded and run.
std::string systemProxy(const std::string& url);

}  // namespace orvane::platform
