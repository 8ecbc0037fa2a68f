#pragma once

#include <memory>
#include <optional>

#include "orvane/commons/Export.h"
#include "platform/urlsession/URLTask.h"

namespace orvane::platform {

class URLSessionThread;

// One request of an NSURLSession, from NSURLSession::dataTaskWithRequest. It may be released as
// soon as it has been resumed: the session keeps what the request needs until it has ended.
class ORVANE_EXPORT NSURLSessionDataTask {
public:
    // Called once for each resumed task, with the data and the response of a complete answer, or
    // with an error and neither of them: a part of a body is never delivered. It runs on the
    // session's thread and must not block; after the session was invalidated it runs on the thread
    // that called resume().
    using CompletionHandler = URLCompletionHandler;

    NSURLSessionDataTask(std::shared_ptr<URLSessionThread> thread, URLTask task);
    ~NSURLSessionDataTask();
    NSURLSessionDataTask(const NSURLSessionDataTask&) = delete;
    NSURLSessionDataTask& operator=(const NSURLSessionDataTask&) = delete;

    // Sends the request. From any thread, but one thread at a time; a second call does nothing.
    void resume();

private:
    std::shared_ptr<URLSessionThread> thread_;
    std::optional<URLTask> task_;  // Empty after resume().
};

}  // namespace orvane::platform
