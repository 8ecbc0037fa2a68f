#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/NSMutableURLRequest.h"

namespace orvane::platform {

// Receives either the data and the response of a complete answer, or an error and neither of them.
using URLCompletionHandler = std::function<void(
    const NSData&, const std::optional<NSHTTPURLResponse>&, const std::optional<NSError>&)>;

// The work of one data task, as data. The session's units pass it on by moving it, and the last one
// calls complete() or fail() exactly once.
struct URLTask {
    // The request that is sent next: a redirection replaces it.
    NSMutableURLRequest request;
    URLCompletionHandler handler;
    // The result of NSURLSessionConfiguration::proxy for the server of the request.
    std::string proxy = {};
    // How many redirections were followed.
    int redirections = 0;

    void complete(const NSData& data, const NSHTTPURLResponse& response) const {
        handler(data, response, std::nullopt);
    }
    void fail(const NSError& error) const { handler(NSData(), std::nullopt, error); }
    void fail(const char* description) const {
        fail(NSError(NSString::initWithUTF8String(description).value_or(NSString())));
    }
};

}  // namespace orvane::platform
