#include "platform/urlsession/systemProxy.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <memory>
#include <mutex>
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

// The lookups that are running. GIO and its modules load libraries during a lookup, which must not
// happen while the process unloads its own: libraries that are initialized a second time abort. So
// the exit of the process cancels the lookups and waits for them, up to a second.
class Lookups {
public:
    static Lookups& instance() {
        // Never destroyed, because a lookup may outlast the wait.
        static auto* const lookups = [] {
            auto* const created = new Lookups;
            std::atexit([] { instance().end(); });
            return created;
        }();
        return *lookups;
    }

    // Returns false if the process is exiting; otherwise leave() must follow.
    [[nodiscard]] bool enter() {
        const std::lock_guard lock(mutex_);
        running_ += ended_ ? 0 : 1;
        return !ended_;
    }
    void leave() {
        const std::lock_guard lock(mutex_);
        --running_;
        changed_.notify_all();
    }
    // Borrowed; never null.
    GCancellable* cancellable() const { return cancellable_; }

private:
    void end() {
        g_cancellable_cancel(cancellable_);
        std::unique_lock lock(mutex_);
        ended_ = true;
        changed_.wait_for(lock, std::chrono::seconds(1), [this] { return running_ == 0; });
    }

    GCancellable* const cancellable_ = g_cancellable_new();
    std::mutex mutex_;
    std::condition_variable changed_;
    int running_ = 0;
    bool ended_ = false;
};

std::string lookUp(const std::string& server) {
    // Owned by GIO and never freed.
    GProxyResolver* const resolver = g_proxy_resolver_get_default();
    const std::unique_ptr<gchar*, decltype(&g_strfreev)> proxies(
        g_proxy_resolver_lookup(resolver, server.c_str(), Lookups::instance().cancellable(),
                                nullptr),
        &g_strfreev);
    // The first proxy is preferred; the others are alternatives for when it fails.
    return proxies && *proxies ? translated(*proxies) : std::string();
}

}  // namespace

std::string systemProxy(const std::string& url) {
    if (environmentNamesProxies()) {
        return {};
    }
    // A configuration script has no business with paths and queries.
    const std::string server = url.substr(0, url.find('/', url.find("://") + 3)) + "/";
    if (!Lookups::instance().enter()) {
        return {};
    }
    const std::string proxy = lookUp(server);
    Lookups::instance().leave();
    return proxy;
}

}  // namespace orvane::platform
