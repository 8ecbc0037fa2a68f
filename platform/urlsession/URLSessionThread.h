#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/ProxyCache.h"
#include "platform/urlsession/URLLoader.h"
#include "platform/urlsession/URLTask.h"

namespace orvane::platform {

// The thread of a session, which starts with the first task, and the queue of tasks for it.
// A task whose proxy is not known waits until a thread of its own has looked the proxy up.
//
// Thread-safe. Owned by shared pointers: the lookups hold one, too.
class URLSessionThread : public std::enable_shared_from_this<URLSessionThread> {
public:
    explicit URLSessionThread(const NSURLSessionConfiguration& configuration);
    ~URLSessionThread();
    URLSessionThread(const URLSessionThread&) = delete;
    URLSessionThread& operator=(const URLSessionThread&) = delete;

    // After cancel() the task fails at once, on the caller's thread.
    void submit(URLTask task);
    // Ends every task with an error and joins the thread. Not on the session's thread.
    void cancel();

private:
    // Called with the mutex held. Returns whether the thread must be woken afterwards.
    [[nodiscard]] bool enqueue(URLTask task);
    void startLookUp(const NSURL& url);
    void proxyFound(const std::string& origin, const std::string& proxy);
    bool hasSubmitted();
    void run();

    const NSURLSessionConfiguration configuration_;
    // Exists from the first task on.
    std::optional<URLLoader> loader_;
    std::mutex mutex_;
    std::vector<URLTask> submitted_;
    // Tasks that wait for the proxy of their server, by its origin.
    std::unordered_map<std::string, std::vector<URLTask>> awaitingProxy_;
    ProxyCache proxies_;
    bool isCancelled_ = false;
    std::thread thread_;
};

}  // namespace orvane::platform
