#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/NSURLSessionDataTask.h"

namespace orvane::platform {

// HTTP as a browser speaks it: HTTP/1.1 and HTTP/2 over kept connections, TLS with verified names,
// redirections, cookies shared by the session's requests (in memory), compressed bodies decoded,
// proxies as the environment names them (http_proxy, https_proxy, all_proxy, no_proxy) or else the
// desktop's settings. There is no cache.
//
// All transfers of a session share one thread, which it starts with its first request. Used from
// any thread.
class ORVANE_EXPORT NSURLSession {
public:
    // The session of the process. It ends with the process: what still runs then is cancelled, and
    // whoever waits for it is told.
    static NSURLSession& sharedSession();

    explicit NSURLSession(const NSURLSessionConfiguration& configuration);
    ~NSURLSession();
    NSURLSession(const NSURLSession&) = delete;
    NSURLSession& operator=(const NSURLSession&) = delete;

    // A task that waits for its resume().
    [[nodiscard]] std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(
        NSMutableURLRequest request, NSURLSessionDataTask::CompletionHandler handler);

    // Ends every task with an error and the session's thread; later tasks fail at once. Not from
    // the session's thread.
    void invalidateAndCancel();

private:
    std::shared_ptr<URLSessionThread> thread_;
};

}  // namespace orvane::platform
