#include "platform/urlsession/systemProxy.h"

#include <gio/gio.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace orvane::platform {

namespace {

bool environmentNamesProxies() {
    constexpr const char* names[] = {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy",
                                     "ALL_PROXY"};
    return std::ranges::any_of(names, [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    });
}

// Translates GIO's names for kinds of proxies to those of libcurl that let the proxy resolve host
// names.
std::string translated(std::string_view proxy) {
    using Scheme = std::pair<std::string_view, std::string_view>;
    for (const auto& [theirs, ours] :
         {Scheme{"socks://", "socks5h://"}, Scheme{"socks5://", "socks5h://"},
          Scheme{"socks4://", "socks4a://"}}) {
        if (proxy.starts_with(theirs)) {
            return std::string(ours) + std::string(proxy.substr(theirs.size()));
        }
    }
    return std::string(proxy.starts_with("direct:") ? std::string_view() : proxy);
}

}  // namespace

std::string systemProxy(const std::string& url) {
    if (environmentNamesProxies()) {
        return {};
    }
    // A configuration script has no business with paths and queries.
    const std::string server = url.substr(0, url.find('/', url.find("://") + 3)) + "/";
    // Owned by GIO and never freed.
    GProxyResolver* const resolver = g_proxy_resolver_get_default();
    const std::unique_ptr<gchar*, decltype(&g_strfreev)> proxies(
        g_proxy_resolver_lookup(resolver, server.c_str(), nullptr, nullptr), &g_strfreev);
    // The first proxy is preferred; the others are alternatives for when it fails.
    return proxies && *proxies ? translated(*proxies) : std::string();
}

}  // namespace orvane::platform
