#pragma once

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/urlsession/URLLoader.h"
#include "platform/urlsession/URLTask.h"

namespace orvane::platform {

// The thread of a session and the door to it. It starts with the first task.
class URLSessionThread {
public:
    explicit URLSessionThread(const NSURLSessionConfiguration& configuration);
    ~URLSessionThread();
    URLSessionThread(const URLSessionThread&) = delete;
    URLSessionThread& operator=(const URLSessionThread&) = delete;

    // From any thread. After cancel() the task fails at once, on the caller's thread.
    void submit(URLTask task);
    // Ends every task with an error and waits for the thread to end.
    void cancel();

private:
    void start();
    bool hasSubmitted();
    void run();

    const std::function<std::string(const std::string&)> proxy_;
    URLLoader loader_;
    std::mutex mutex_;
    std::vector<URLTask> submitted_;
    bool isCancelled_ = false;
    std::thread thread_;
};

}  // namespace orvane::platform
