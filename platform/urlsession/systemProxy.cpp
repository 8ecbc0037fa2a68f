#include "platform/urlsession/systemProxy.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
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

std::string lookUp(const std::string& server) {
    // The process's own, never freed.
    GProxyResolver* const resolver = g_proxy_resolver_get_default();
    const std::unique_ptr<gchar*, decltype(&g_strfreev)> proxies(
        g_proxy_resolver_lookup(resolver, server.c_str(), nullptr, nullptr), &g_strfreev);
    // The first is the one to use; the others stand in for it.
    return proxies && *proxies ? translated(*proxies) : std::string();
}

// Asking costs more than a small request.
class Answers {
public:
    std::string of(const std::string& server) {
        const auto now = Clock::now();
        {
            const std::lock_guard lock(mutex_);
            const auto known = answers_.find(server);
            if (known != answers_.end() && now < known->second.until) {
                return known->second.proxy;
            }
        }
        const std::string proxy = lookUp(server);
        const std::lock_guard lock(mutex_);
        if (answers_.size() >= kMost) {
            answers_.clear();
        }
        answers_[server] = {proxy, now + kLifetime};
        return proxy;
    }

private:
    using Clock = std::chrono::steady_clock;
    struct Answer {
        std::string proxy;
        Clock::time_point until;
    };
    static constexpr std::chrono::seconds kLifetime{5};
    static constexpr std::size_t kMost = 1000;

    std::mutex mutex_;
    std::unordered_map<std::string, Answer> answers_;
};

}  // namespace

std::string systemProxy(const std::string& url) {
    if (environmentNamesProxies()) {
        return {};
    }
    // Never destroyed: a background worker may still send while the process ends.
    static Answers* const answers = new Answers;
    return answers->of(url.substr(0, url.find('/', url.find("://") + 3)) + "/");
}

}  // namespace orvane::platform
