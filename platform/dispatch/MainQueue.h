#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/dispatch/QueueTurns.h"

typedef struct _GSource GSource;

namespace orvane::platform {

// Implements dispatchMainAsync, dispatchMainSync, drainMainQueue and closeMainQueue; see
// dispatch.h for their contracts. There is one queue per process. It is never destroyed, because
// threads that outlive the exit handlers still post to it.
//
// The GLib loop runs the queue through two sources. The first has a priority above the desktop's
// redrawing and runs the work, one turn at a time. The second has a priority below redrawing: when
// the loop reaches it, everything that had to be drawn has been drawn, and the next turn may begin.
class MainQueue {
public:
    static MainQueue& shared();

    void async(std::function<void()> work);
    void sync(const std::function<void()>& work);
    bool drain(std::chrono::milliseconds patience);
    void close();

    // Called by the GLib sources on the main thread.
    void runTurn();
    void framesHadOpportunity();

private:
    // A caller that waits in sync(); on that caller's stack.
    struct Call {
        enum class State { Waiting, Running, Done };

        const std::function<void()>& work;
        State state = State::Waiting;
        std::exception_ptr error = nullptr;
        // One per call, so that finishing a call wakes only its caller.
        std::condition_variable finished = {};
    };
    // Contains either work or a call.
    struct Item {
        std::function<void()> work;
        Call* call = nullptr;
    };

    MainQueue();

    bool push(Item item);
    template <typename MayContinue>
    bool runItems(std::unique_lock<std::mutex>& lock, MayContinue mayContinue);
    void run(Item item);
    void runAfterClose(const std::function<void()>& work);
    void wakeLoop();

    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Item> items_;
    QueueTurns turns_;
    Call* running_ = nullptr;
    bool draining_ = false;
    bool closed_ = false;
    // The main thread closed the queue: the work that it was running will never finish.
    bool abandoned_ = false;
    std::thread::id closer_;
    std::recursive_mutex afterClose_;
    GSource* turnSource_;
    GSource* opportunitySource_;
};

}  // namespace orvane::platform
