#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::network {

class ResponseCache;

// The result of fetchCached.
struct Fetched {
    // What is at the address; valid during the call. Also set if the server could not be reached
    // and the cache has what was there before. Nothing if there is neither.
    std::optional<std::span<const unsigned char>> body;
    // Why the server has not answered with a success; empty if it has, or was not asked.
    std::string error;
    // The status of the failure; -1 if the server sent no complete response.
    std::int32_t status = 0;
};

// Fetches what is at an http or https address by way of a cache (RFC 9111): the server is not asked
// while the cache may be used, and sends only what has changed. Reads the cache on the calling
// thread. Calls `done` once, on that thread before it returns or on a background thread. Any
// thread.
ORVANE_EXPORT void fetchCached(const std::shared_ptr<ResponseCache>& cache,
                               const std::string& address,
                               std::function<void(const Fetched& fetched)> done);

// Decodes a part of an address: "%" with two hexadecimal digits becomes that byte, "+" a space.
std::string percentDecoded(const std::string& text);

}  // namespace orvane::network
