#pragma once

#include <memory>
#include <mutex>

#include "orvane/commons/Export.h"
#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/NSURLSessionDataTask.h"

namespace orvane::platform {

// An HTTP client: HTTP/1.1 and HTTP/2 over kept connections, TLS with verified certificates,
// redirections, cookies that the session's requests share in memory, decoding of gzip bodies, and
// the proxies of the environment (http_proxy, https_proxy, all_proxy, no_proxy) or else of the
// desktop's settings. There is no cache.
//
// Thread-safe. All transfers of a session share one thread, which starts with the first request.
class ORVANE_EXPORT NSURLSession {
public:
    // The session of the process, which is invalidated when the process exits: running tasks then
    // fail, so no caller waits for them.
    static NSURLSession& sharedSession();

    explicit NSURLSession(const NSURLSessionConfiguration& configuration);
    ~NSURLSession();
    NSURLSession(const NSURLSession&) = delete;
    NSURLSession& operator=(const NSURLSession&) = delete;

    // Returns a task that starts with its resume().
    [[nodiscard]] std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(
        NSMutableURLRequest request, NSURLSessionDataTask::CompletionHandler handler);

    // Ends every task with an error and joins the session's thread; later tasks fail at once. Must
    // not be called on the session's thread.
    void invalidateAndCancel();
    // Makes a session that was invalidated run later tasks. Does nothing to one that was not.
    void renew();

private:
    std::shared_ptr<URLSessionThread> thread();

    const NSURLSessionConfiguration configuration_;
    std::mutex mutex_;  // guards the following members
    std::shared_ptr<URLSessionThread> thread_;
    bool isInvalidated_ = false;
};

}  // namespace orvane::platform
