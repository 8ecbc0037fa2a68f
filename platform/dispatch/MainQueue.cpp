#include "platform/dispatch/MainQueue.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

void logUncaught(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& exception) {
        NSLog("Uncaught exception on the main queue: %s", exception.what());
    } catch (...) {
        NSLog("Uncaught exception on the main queue: unknown exception");
    }
}

// GLib keeps a source from being dispatched inside its own dispatch, which is what keeps the queue
// serial when a piece of work runs a loop of its own.
gboolean dispatchSource(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    // Before draining: what arrives meanwhile arms the source again.
    g_source_set_ready_time(source, -1);
    MainQueue::shared().drain({});
    return G_SOURCE_CONTINUE;
}

GSourceFuncs sourceFunctions = {nullptr, nullptr, dispatchSource, nullptr, nullptr, nullptr};

}  // namespace

MainQueue& MainQueue::shared() {
    static auto& queue = *new MainQueue;
    return queue;
}

MainQueue::MainQueue() : source_(g_source_new(&sourceFunctions, sizeof(GSource))) {
    g_source_set_name(source_, "orvane main queue");
    g_source_attach(source_, nullptr);
}

void MainQueue::wakeLoop() {
    g_source_set_ready_time(source_, 0);
}

// False, with the item dropped, when the queue is closed.
bool MainQueue::push(Item item) {
    {
        const std::lock_guard lock(mutex_);
        if (closed_) {
            return false;
        }
        items_.push_back(std::move(item));
    }
    arrived_.notify_one();
    wakeLoop();
    return true;
}

void MainQueue::async(std::function<void()> work) {
    push({std::move(work)});
}

void MainQueue::sync(const std::function<void()>& work) {
    Call call{work};
    if (push({{}, &call})) {
        std::unique_lock lock(mutex_);
        call.finished.wait(lock, [&] { return call.state == Call::State::Done || closed_; });
        if (closed_) {
            call.finished.wait(lock,
                               [&] { return call.state != Call::State::Running || abandoned_; });
            if (running_ == &call) {
                running_ = nullptr;
            }
        }
        if (call.error) {
            std::rethrow_exception(call.error);
        }
        if (call.state != Call::State::Waiting) {
            return;
        }
        std::erase_if(items_, [&](const Item& item) { return item.call == &call; });
    }
    runAfterClose(work);
}

void MainQueue::runAfterClose(const std::function<void()>& work) {
    if (UnjoinedThread::isCurrent()) {
        for (;;) {
            pause();
        }
    }
    const std::lock_guard serial(afterClose_);
    work();
}

bool MainQueue::drain(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (draining_) {
        return false;
    }
    arrived_.wait_for(lock, patience, [&] { return !items_.empty() || closed_; });
    draining_ = true;
    bool ran = false;
    for (std::size_t left = items_.size(); left > 0 && !items_.empty() && !closed_; --left) {
        Item item = std::move(items_.front());
        items_.pop_front();
        if (item.call) {
            item.call->state = Call::State::Running;
            running_ = item.call;
        }
        lock.unlock();
        run(std::move(item));
        ran = true;
        lock.lock();
    }
    draining_ = false;
    // A nested loop may have used up the wake-up of what came meanwhile.
    if (!items_.empty() && !closed_) {
        wakeLoop();
    }
    return ran;
}

void MainQueue::run(Item item) {
    std::exception_ptr error;
    try {
        (item.call ? item.call->work : item.work)();
    } catch (...) {
        error = std::current_exception();
    }
    if (item.call) {
        const std::lock_guard lock(mutex_);
        item.call->error = std::move(error);
        item.call->state = Call::State::Done;
        running_ = nullptr;
        item.call->finished.notify_one();
    } else if (error) {
        logUncaught(error);
    }
}

void MainQueue::close() {
    // Notified under the lock: the calls are on the stacks of those that wait.
    const std::lock_guard lock(mutex_);
    closed_ = true;
    // Work that ends the process is still on this thread's stack, and will never end.
    abandoned_ = abandoned_ || isMainThread();
    arrived_.notify_all();
    for (const Item& item : items_) {
        if (item.call) {
            item.call->finished.notify_one();
        }
    }
    if (running_) {
        running_->finished.notify_one();
    }
}

}  // namespace orvane::platform
