#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

namespace orvane::platform {

// Remembers the proxies of servers for a few seconds, because a lookup costs more than a small
// request. Not thread-safe.
class ProxyCache {
public:
    // The proxy that was stored for this origin (see NSURL::origin) in the last five seconds.
    [[nodiscard]] std::optional<std::string> find(const std::string& origin) const;
    void store(const std::string& origin, const std::string& proxy);

private:
    using Clock = std::chrono::steady_clock;
    struct Entry {
        std::string proxy;
        Clock::time_point expiry;
    };
    static constexpr std::chrono::seconds kLifetime{5};
    static constexpr std::size_t kMaximumSize = 1000;

    std::unordered_map<std::string, Entry> entries_;
};

}  // namespace orvane::platform
