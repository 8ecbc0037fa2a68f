#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>

typedef struct _GSource GSource;

namespace orvane::platform {

// The queue behind dispatchMainAsync, dispatchMainSync and their companions, which say what it
// promises. One a process, never destroyed: threads that outlive the exit handlers still post.
class MainQueue {
public:
    static MainQueue& shared();

    void async(std::function<void()> work);
    void sync(const std::function<void()>& work);
    bool drain(std::chrono::milliseconds patience);
    void close();

private:
    // A caller that waits in sync(), on its own stack.
    struct Call {
        enum class State { Waiting, Running, Done };

        const std::function<void()>& work;
        State state = State::Waiting;
        std::exception_ptr error = nullptr;
        // Each waits on its own: one that is done wakes one, however many wait.
        std::condition_variable finished = {};
    };
    // Either work of its own or a call's.
    struct Item {
        std::function<void()> work;
        Call* call = nullptr;
    };

    MainQueue();

    bool push(Item item);
    void run(Item item);
    void runAfterClose(const std::function<void()>& work);
    void wakeLoop();

    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Item> items_;
    Call* running_ = nullptr;
    bool draining_ = false;
    bool closed_ = false;
    // The main thread closed the queue: the work it had begun was left for good.
    bool abandoned_ = false;
    std::recursive_mutex afterClose_;
    GSource* source_;
};

}  // namespace orvane::platform
