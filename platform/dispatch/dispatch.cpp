#include "platform/dispatch/dispatch.h"

#include <unistd.h>

#include <condition_variable>
#include <mutex>
#include <utility>

#include "platform/dispatch/BackgroundQueue.h"
#include "platform/dispatch/MainQueue.h"

namespace orvane::platform {

namespace {

thread_local bool isUnjoined = false;

}  // namespace

UnjoinedThread::UnjoinedThread() {
    isUnjoined = true;
}

UnjoinedThread::~UnjoinedThread() {
    isUnjoined = false;
}

bool UnjoinedThread::isCurrent() {
    return isUnjoined;
}

bool isMainThread() {
    return gettid() == getpid();
}

void dispatchMainAsync(std::function<void()> work) {
    MainQueue::shared().async(std::move(work));
}

void dispatchMainSync(const std::function<void()>& work) {
    MainQueue::shared().sync(work);
}

bool drainMainQueue(std::chrono::milliseconds patience) {
    return MainQueue::shared().drain(patience);
}

void closeMainQueue() {
    MainQueue::shared().close();
}

void dispatchBackgroundAsync(std::function<void()> work) {
    BackgroundQueue::shared().async(std::move(work));
}

struct DispatchSemaphore::State {
    std::mutex mutex;
    std::condition_variable signalled;
    long count;
};

DispatchSemaphore::DispatchSemaphore(long count) : state_(std::make_unique<State>()) {
    state_->count = count;
}

DispatchSemaphore::~DispatchSemaphore() = default;

void DispatchSemaphore::signal() {
    // Notified under the lock: once a waiter is through, the semaphore may be gone.
    const std::lock_guard lock(state_->mutex);
    ++state_->count;
    state_->signalled.notify_one();
}

void DispatchSemaphore::wait() {
    std::unique_lock lock(state_->mutex);
    state_->signalled.wait(lock, [this] { return state_->count > 0; });
    --state_->count;
}

}  // namespace orvane::platform
