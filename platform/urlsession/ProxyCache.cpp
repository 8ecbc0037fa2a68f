#include "platform/urlsession/ProxyCache.h"

namespace orvane::platform {

std::optional<std::string> ProxyCache::find(const std::string& origin) const {
    const auto found = entries_.find(origin);
    if (found == entries_.end() || found->second.expiry <= Clock::now()) {
        return std::nullopt;
    }
    return found->second.proxy;
}

void ProxyCache::store(const std::string& origin, const std::string& proxy) {
    if (entries_.size() >= kMaximumSize) {
        entries_.clear();
    }
    entries_[origin] = {proxy, Clock::now() + kLifetime};
}

}  // namespace orvane::platform
