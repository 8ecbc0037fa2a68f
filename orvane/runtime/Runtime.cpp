#include "orvane/runtime/Runtime.h"

#include <utility>

#include "orvane/commons/Trace.h"
#include "orvane/system/system.h"

namespace orvane {

Runtime* Runtime::GetInstance() {
    const std::lock_guard lock(initMutex_);
    if (!instance_) {
        instance_.reset(new Runtime);
    }
    return instance_.get();
}

void Runtime::DeleteInstance() {
    const std::lock_guard lock(initMutex_);
    if (instance_ && instance_->thread_.get_id() != std::this_thread::get_id()) {
        // reset() clears the pointer before it destroys the object. The lock is held until the
        // thread has ended, so there are never two instances with a running thread.
        instance_.reset();
    }
}

Runtime::Runtime() {
    system::initSystem();
    thread_ = std::thread(&Runtime::loop, this);
}

Runtime::~Runtime() {
    run({}, 0);
    if (thread_.get_id() == std::this_thread::get_id()) {
        // A task has called exit(), and this is an exit handler: the task never returns.
        thread_.detach();
    } else if (thread_.joinable()) {
        thread_.join();
    }
}

void Runtime::stop() {
    run({}, 0);
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id()) {
        thread_.join();
    }
}

Runtime::TimePoint Runtime::now() {
    return std::chrono::time_point_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now());
}

void Runtime::run(std::function<void()> task, unsigned int delay) {
    const std::lock_guard lock(mutex_);
    const TimePoint key = now() + std::chrono::microseconds(std::int64_t{delay} * 1000);
    const auto entry = tasks_.emplace(key, std::move(task));
    // If the new task is not the first, the thread's wait already ends no later than that one.
    if (entry == tasks_.begin()) {
        condition_.notify_one();
    }
}

void Runtime::initThread() {}
void Runtime::cleanupThread() {}

// Runs one task per iteration, with a wait after each, even if others are overdue: that wait
// returns at once. The wait has no predicate; an iteration that finds nothing due waits again.
void Runtime::loop() {
    initThread();
    for (;;) {
        // Destroyed after the wait below, so the captures of a task live until the next one is due.
        std::function<void()> current;
        {
            const std::lock_guard lock(mutex_);
            const auto first = tasks_.begin();
            if (first != tasks_.end() && now() >= first->first) {
                current = first->second;
                tasks_.erase(first);
                if (!current) {
                    break;
                }
            }
        }
        if (current) {
            const commons::TraceScope trace("task");
            current();
        }
        std::unique_lock lock(mutex_);
        if (tasks_.empty()) {
            condition_.wait(lock);
        } else {
            // The key, passed by reference, stays valid: only this thread removes entries.
            condition_.wait_until(lock, tasks_.begin()->first);
        }
    }
    cleanupThread();
}

void Runtime::initSwift(const std::string& directory) {
    loadSwiftLibrary(directory);
}

}  // namespace orvane
