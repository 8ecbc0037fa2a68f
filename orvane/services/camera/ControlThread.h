#pragma once

#include <glib.h>

#include <functional>
#include <future>
#include <memory>
#include <thread>

namespace orvane::services {

// The thread that controls GStreamer: finding cameras, and starting and stopping them, may wait for
// devices and for servers. Its main context is the thread's default one, so that watches for
// messages that are created on the thread are called there.
class ControlThread {
public:
    ControlThread();
    // Runs the work that is queued, and ends the thread. A thread that a device blocks is left to
    // itself after some seconds.
    ~ControlThread();
    ControlThread(const ControlThread&) = delete;
    ControlThread& operator=(const ControlThread&) = delete;

    // Queues work, which runs in this order. Any thread.
    void run(std::function<void()> work) const;

private:
    struct Loop;

    std::shared_ptr<Loop> loop_;
    std::future<void> ended_;
    std::thread thread_;
};

}  // namespace orvane::services
