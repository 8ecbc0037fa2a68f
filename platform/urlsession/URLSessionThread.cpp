#include "platform/urlsession/URLSessionThread.h"

#include <pthread.h>

#include <optional>
#include <utility>

#include "platform/urlsession/AllSignalsBlocked.h"
#include "platform/urlsession/CurlLibrary.h"
#include "platform/urlsession/runProxyLookup.h"

namespace orvane::platform {

namespace {

constexpr const char* kCancelled = "The request was canceled.";

}  // namespace

URLSessionThread::URLSessionThread(const NSURLSessionConfiguration& configuration)
    : configuration_(configuration) {}

URLSessionThread::~URLSessionThread() {
    cancel();
}

void URLSessionThread::submit(URLTask task) {
    std::unique_lock lock(mutex_);
    if (isCancelled_) {
        lock.unlock();
        task.fail(kCancelled);
        return;
    }
    if (CurlLibrary::instance() == nullptr) {
        lock.unlock();
        task.fail("libcurl is missing");
        return;
    }
    const std::optional<NSURL>& url = task.request.URL();
    auto proxy = url && configuration_.proxy ? proxies_.find(url->origin()) : std::string();
    if (!proxy) {
        const NSURL toLookUp = *url;
        const auto [waiting, isFirst] = awaitingProxy_.try_emplace(toLookUp.origin());
        waiting->second.push_back(std::move(task));
        lock.unlock();
        if (isFirst) {
            startLookUp(toLookUp);
        }
        return;
    }
    task.proxy = std::move(*proxy);
    const bool mustWake = enqueue(std::move(task));
    lock.unlock();
    if (mustWake) {
        loader_->wake();
    }
}

bool URLSessionThread::enqueue(URLTask task) {
    // One wake is enough until the thread has taken what was submitted, and the thread itself looks
    // before it waits.
    const bool mustWake = submitted_.empty() && std::this_thread::get_id() != thread_.get_id();
    submitted_.push_back(std::move(task));
    if (!thread_.joinable()) {
        loader_.emplace(configuration_, [this](URLTask next) { submit(std::move(next)); });
        const AllSignalsBlocked blocked;
        thread_ = std::thread([this] { run(); });
        pthread_setname_np(thread_.native_handle(), "URLSession");
    }
    return mustWake;
}

void URLSessionThread::startLookUp(const NSURL& url) {
    runProxyLookup([self = shared_from_this(), url] {
        self->proxyFound(url.origin(), self->configuration_.proxy(url.absoluteString()));
    });
}

void URLSessionThread::proxyFound(const std::string& origin, const std::string& proxy) {
    bool mustWake = false;
    {
        const std::lock_guard lock(mutex_);
        proxies_.store(origin, proxy);
        // After cancel() there are none.
        const auto waiting = awaitingProxy_.extract(origin);
        if (!waiting) {
            return;
        }
        for (URLTask& task : waiting.mapped()) {
            task.proxy = proxy;
            mustWake = enqueue(std::move(task)) || mustWake;
        }
    }
    if (mustWake) {
        loader_->wake();
    }
}

void URLSessionThread::cancel() {
    std::thread thread;
    decltype(awaitingProxy_) awaitingProxy;
    {
        const std::lock_guard lock(mutex_);
        isCancelled_ = true;
        thread = std::move(thread_);
        awaitingProxy = std::exchange(awaitingProxy_, {});
    }
    if (thread.joinable()) {
        loader_->wake();
        thread.join();
    }
    for (const auto& [origin, tasks] : awaitingProxy) {
        for (const URLTask& task : tasks) {
            task.fail(kCancelled);
        }
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
            loader_->add(std::move(task));
        }
        if (isLast) {
            loader_->failAll(kCancelled);
            return;
        }
        loader_->proceed();
        // Handlers that ran on this thread may have submitted tasks.
        if (!hasSubmitted()) {
            loader_->wait();
        }
    }
}

}  // namespace orvane::platform
