#include "platform/urlsession/URLSessionThread.h"

#include <pthread.h>

#include <csignal>
#include <utility>

namespace orvane::platform {

namespace {

// The process's signals are for the threads that expect them, and a connection that the other side
// closed must not end the process: the session's thread, and what it starts, takes none.
class AllSignalsBlocked {
public:
    AllSignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    AllSignalsBlocked(const AllSignalsBlocked&) = delete;
    AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;

private:
    sigset_t before_{};
};

}  // namespace

URLSessionThread::URLSessionThread(const NSURLSessionConfiguration& configuration)
    : proxy_(configuration.proxy), loader_(configuration) {}

URLSessionThread::~URLSessionThread() {
    cancel();
}

void URLSessionThread::submit(URLTask task) {
    if (const auto& url = task.request.URL(); url && proxy_) {
        task.proxy = proxy_(url->absoluteString());
    }
    bool isAccepted = false;
    bool isToWake = false;
    {
        const std::lock_guard lock(mutex_);
        isAccepted = !isCancelled_;
        if (isAccepted) {
            // One wake is enough until the thread has taken what was submitted, and the thread
            // itself looks before it waits.
            isToWake = submitted_.empty() && std::this_thread::get_id() != thread_.get_id();
            submitted_.push_back(std::move(task));
            start();
        }
    }
    if (!isAccepted) {
        task.fail("cancelled");
    } else if (isToWake) {
        loader_.wake();
    }
}

void URLSessionThread::cancel() {
    std::thread thread;
    {
        const std::lock_guard lock(mutex_);
        isCancelled_ = true;
        thread = std::move(thread_);
    }
    if (thread.joinable()) {
        loader_.wake();
        thread.join();
    }
}

void URLSessionThread::start() {
    if (!thread_.joinable()) {
        const AllSignalsBlocked blocked;
        thread_ = std::thread([this] { run(); });
        pthread_setname_np(thread_.native_handle(), "URLSession");
    }
}

bool URLSessionThread::hasSubmitted() {
    const std::lock_guard lock(mutex_);
    return !submitted_.empty();
}

void URLSessionThread::run() {
    for (;;) {
        std::vector<URLTask> tasks;
        bool isLast = false;
        {
            const std::lock_guard lock(mutex_);
            tasks.swap(submitted_);
            isLast = isCancelled_;
        }
        for (URLTask& task : tasks) {
            loader_.add(std::move(task));
        }
        if (isLast) {
            loader_.cancelAll();
            return;
        }
        if (!tasks.empty() && hasSubmitted()) {
            loader_.wake();  // one failed at once, and whoever was told asked for the next
        }
        loader_.turn();
    }
}

}  // namespace orvane::platform
