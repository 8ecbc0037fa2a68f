#include "platform/foundation/systemProxy.h"

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

// The desktop's word for a kind of proxy, and libcurl's: in its kinds that end in h or a the proxy
// looks names up.
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
    // The process's own, never freed.
    GProxyResolver* const resolver = g_proxy_resolver_get_default();
    const std::unique_ptr<gchar*, decltype(&g_strfreev)> proxies(
        g_proxy_resolver_lookup(resolver, url.c_str(), nullptr, nullptr), &g_strfreev);
    // The first is the one to use; the others stand in for it.
    return proxies && *proxies ? translated(*proxies) : std::string();
}

}  // namespace orvane::platform
