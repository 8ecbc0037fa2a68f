#include "platform/dispatch/dispatch.h"

#include <semaphore.h>
#include <unistd.h>

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
    thread_local const bool isMain = gettid() == getpid();  // two system calls
    return isMain;
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

// A POSIX semaphore may be destroyed as soon as the waiter has returned, even if sem_post has not.
struct DispatchSemaphore::State {
    sem_t semaphore;
};

DispatchSemaphore::DispatchSemaphore(long count) : state_(std::make_unique<State>()) {
    sem_init(&state_->semaphore, 0, static_cast<unsigned>(count));
}

DispatchSemaphore::~DispatchSemaphore() {
    sem_destroy(&state_->semaphore);
}

void DispatchSemaphore::signal() {
    sem_post(&state_->semaphore);
}

void DispatchSemaphore::wait() {
    while (sem_wait(&state_->semaphore) != 0) {
        // Interrupted by a signal handler.
    }
}

}  // namespace orvane::platform
