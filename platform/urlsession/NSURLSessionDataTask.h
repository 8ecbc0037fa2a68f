#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "orvane/commons/Export.h"
#include "platform/urlsession/NSMutableURLRequest.h"

namespace orvane::platform {

class NSData;
class NSError;
class NSHTTPURLResponse;
class URLSessionThread;

// One request of an NSURLSession and who is told of its end.
class ORVANE_EXPORT NSURLSessionDataTask
    : public std::enable_shared_from_this<NSURLSessionDataTask> {
public:
    // Either the data of a whole answer and its response, or an error: half a body under a good
    // status would pass for a whole one. Called once, on the session's thread, which must not be
    // held up; without any response of a server there is an error.
    using CompletionHandler = std::function<void(
        const NSData&, const std::optional<NSHTTPURLResponse>&, const std::optional<NSError>&)>;

    NSURLSessionDataTask(std::shared_ptr<URLSessionThread> thread, NSMutableURLRequest request,
                         CompletionHandler handler);

    // Sends the request. Once, from any thread; the task lives on until it has ended.
    void resume();

    [[nodiscard]] const NSMutableURLRequest& currentRequest() const { return request_; }
    // For the session's thread: where a redirection leads to.
    void setCurrentRequest(NSMutableURLRequest request);
    // As the session's configuration names it, for the server of the current request.
    [[nodiscard]] const std::string& proxy() const { return proxy_; }
    void setProxy(std::string proxy) { proxy_ = std::move(proxy); }
    void complete(const NSData& data, const NSHTTPURLResponse& response) const;
    void fail(const NSError& error) const;

private:
    std::shared_ptr<URLSessionThread> thread_;
    NSMutableURLRequest request_;
    CompletionHandler handler_;
    std::string proxy_;
};

}  // namespace orvane::platform
