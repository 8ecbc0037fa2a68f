#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::network {

class Request;
class Response;

// Sends requests over the URL session that the process shares. The session follows redirections,
// keeps cookies and connections while the process runs, and has no cache.
//
// A failed request throws nothing. Its response is not ok and has a status message. Its status code
// is -1, or that of the server's response if the server sent a complete one.
class ORVANE_EXPORT RequestService {
public:
    // Sends the request and blocks until it has been answered or has failed. Only the request's
    // time-out limits the wait. Callable from any thread; a call on the main thread stops painting
    // and input until it returns. The flag has no meaning on this platform.
    [[nodiscard]] static Response syncRequest(const Request& request, bool flag = false);

    // Sends a copy of the request and returns at once, on any thread. When the request has been
    // answered, the main thread calls `callback` with a response that is ok, or else the request's
    // error callback. An empty callback raises std::bad_function_call there; what the callbacks
    // throw is logged. A request cannot be canceled.
    //
    // The number of requests is not limited. At most 512 run at the same time, or half of the file
    // descriptors that the process may have, and half of these to one host; others wait for their
    // turn. A request that waits blocks no thread.
    static void asyncRequest(const Request& request,
                             const std::function<void(const Response&)>& callback);
};

}  // namespace orvane::network
