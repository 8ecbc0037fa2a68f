#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::network {

class Request;
class Response;

// Carries out requests over the platform's shared URL session, which follows redirects, keeps
// cookies and connections, and answers nothing from a cache.
//
// A request that fails throws nothing: its Response is not ok, its status message says why, and its
// code is -1 unless a complete answer of the server carried another one.
class ORVANE_EXPORT RequestService {
public:
    // Blocks until the request has been answered or has failed; the request's own time-out is the
    // only limit. From any thread but the session's own; on the main thread it holds the picture
    // up. The flag has no meaning on this platform.
    [[nodiscard]] static Response syncRequest(const Request& request, bool flag = false);

    // Returns at once. Later, on the main thread, the callback gets a response that is ok, or the
    // request's error callback is told otherwise. There is no cancelling and no limit of how many
    // run. An empty callback raises std::bad_function_call there.
    static void asyncRequest(const Request& request,
                             const std::function<void(const Response&)>& callback);
};

}  // namespace orvane::network
