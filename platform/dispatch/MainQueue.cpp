#include "platform/dispatch/MainQueue.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "orvane/commons/Trace.h"
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

// GTK delivers input at the default priority, and resizes and redraws windows at 110 and 120.
constexpr int kTurnPriority = G_PRIORITY_DEFAULT + 10;
constexpr int kOpportunityPriority = G_PRIORITY_HIGH_IDLE + 30;

// GLib never dispatches a source inside its own dispatch: the queue stays serial even if a piece of
// work runs a loop of its own.
gboolean dispatchTurn(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    // Before the turn: work that arrives meanwhile arms the source again.
    g_source_set_ready_time(source, -1);
    MainQueue::shared().runTurn();
    return G_SOURCE_CONTINUE;
}

gboolean dispatchOpportunity(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    g_source_set_ready_time(source, -1);
    MainQueue::shared().framesHadOpportunity();
    return G_SOURCE_CONTINUE;
}

GSourceFuncs turnFunctions = {nullptr, nullptr, dispatchTurn, nullptr, nullptr, nullptr};
GSourceFuncs opportunityFunctions = {nullptr, nullptr, dispatchOpportunity,
                                     nullptr, nullptr, nullptr};

GSource* attachSource(GSourceFuncs& functions, const char* name, int priority) {
    GSource* const source = g_source_new(&functions, sizeof(GSource));
    g_source_set_name(source, name);
    g_source_set_priority(source, priority);
    g_source_attach(source, nullptr);
    return source;
}

}  // namespace

MainQueue& MainQueue::shared() {
    static auto& queue = *new MainQueue;
    return queue;
}

MainQueue::MainQueue()
    : turnSource_(attachSource(turnFunctions, "orvane main queue", kTurnPriority)),
      opportunitySource_(attachSource(opportunityFunctions, "orvane main queue, after frames",
                                      kOpportunityPriority)) {}

// Must be called with the mutex locked.
void MainQueue::wakeLoop() {
    // GLib's monotonic time, in microseconds, is the steady clock's.
    const auto time = std::chrono::ceil<std::chrono::microseconds>(turns_.endOfPause());
    g_source_set_ready_time(turnSource_, time.time_since_epoch().count());
}

// Returns false and drops the item if the queue is closed.
bool MainQueue::push(Item item) {
    {
        const std::lock_guard lock(mutex_);
        if (closed_) {
            return false;
        }
        items_.push_back(std::move(item));
        // Otherwise the source is armed already, or will be when draining ends.
        if (items_.size() == 1 && !draining_) {
            wakeLoop();
        }
    }
    arrived_.notify_one();
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
    const bool isCloser = [this] {
        const std::lock_guard lock(mutex_);
        return std::this_thread::get_id() == closer_;
    }();
    // The thread that ends the process must go on, even if nothing joins it.
    if (UnjoinedThread::isCurrent() && !isCloser) {
        for (;;) {
            pause();
        }
    }
    const std::lock_guard serial(afterClose_);
    work();
}

// Runs the items that are on the queue now, until mayContinue() returns false; it is called after
// each item, with the mutex locked. Items that this work adds are left for the next call.
template <typename MayContinue>
bool MainQueue::runItems(std::unique_lock<std::mutex>& lock, MayContinue mayContinue) {
    draining_ = true;
    bool ran = false;
    bool goesOn = true;
    for (std::size_t left = items_.size(); left > 0 && !items_.empty() && !closed_ && goesOn;
         --left) {
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
        goesOn = mayContinue();
    }
    draining_ = false;
    if (!items_.empty() && !closed_) {
        wakeLoop();
    }
    return ran;
}

bool MainQueue::drain(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (draining_) {
        return false;
    }
    arrived_.wait_for(lock, patience, [&] { return !items_.empty() || closed_; });
    return runItems(lock, [] { return true; });
}

void MainQueue::runTurn() {
    using Clock = std::chrono::steady_clock;
    std::unique_lock lock(mutex_);
    if (draining_ || items_.empty()) {
        return;
    }
    if (turns_.mayBegin(Clock::now())) {
        runItems(lock, [this] { return turns_.mayContinue(Clock::now()); });
    } else {
        wakeLoop();
    }
    g_source_set_ready_time(opportunitySource_, 0);
}

void MainQueue::framesHadOpportunity() {
    const std::lock_guard lock(mutex_);
    turns_.framesHadOpportunity();
    if (!items_.empty() && !draining_) {
        wakeLoop();
    }
}

void MainQueue::run(Item item) {
    std::exception_ptr error;
    try {
        const commons::TraceScope trace("block");
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
    // Notified with the lock held, because the calls are on the stacks of the waiting threads.
    const std::lock_guard lock(mutex_);
    closed_ = true;
    closer_ = std::this_thread::get_id();
    // The work that called exit() is still on this thread's stack, and will never return.
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
