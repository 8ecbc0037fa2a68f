#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "orvane/commons/Export.h"

namespace orvane {

// The process's runtime: starts the applications, and runs their timed tasks one after another on a
// thread of its own. A host calls init_orvane(), GetInstance() and initSwift(), in this order, and
// then runs the loop that drains the main queue; embedding::Session does this for a host.
class ORVANE_EXPORT Runtime {
public:
    // Returns the instance; the first call creates it, together with the application's folders on
    // disk. Any thread. Throws std::system_error if the thread of the timed tasks cannot be
    // started. The pointer is valid until DeleteInstance() or the end of the process.
    static Runtime* GetInstance();
    // Destroys the instance, if there is one: waits for the running task and for all tasks that are
    // due, and drops the others. Those tasks must not call GetInstance() meanwhile, nor wait for
    // the calling thread. Does nothing when called from a task, which cannot wait for its own end.
    static void DeleteInstance();

    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;
    ~Runtime();

    // Queues a task to run once, not earlier than `delay` milliseconds from now. Any thread,
    // including the thread of the tasks.
    //
    // The function is copied and destroyed while the queue is locked, so copying or destroying its
    // captures must not call run(). The captures may stay alive until the next task runs. An empty
    // function ends the thread of the tasks for good when its time comes. A task that throws
    // terminates the process.
    void run(std::function<void()> task, unsigned int delay);

    // The same as loadSwiftLibrary().
    void initSwift(const std::string& directory);
    // Starts every application library in the directory, one after another: opens lib<name>.dylib,
    // creates an object of its class Main and calls the object's main(). Main thread only. Failures
    // are reported on standard error.
    void loadSwiftLibrary(const std::string& directory);

    // Ends the timed tasks for good: waits for the running task and for all tasks that are due, and
    // never runs the others. A host calls this function before DeleteInstance(): it holds no lock,
    // so the tasks may call GetInstance() until the last of them has returned. Returns at once when
    // called from a task. Must not be called from two threads at the same time.
    void stop();

    // Returns whether an application was started, including one whose main() threw. Main thread
    // only.
    [[nodiscard]] bool hasApplication() const { return hasApplication_; }

    // The body of the thread of the timed tasks, which the constructor starts. Returns when it
    // meets an empty task. Nothing else may call it.
    void loop();
    // loop() calls these functions at the beginning and at the end of its thread. They are for
    // platforms whose threads need preparation, and empty on this platform:
    static void initThread();
    static void cleanupThread();

private:
    // 64 bits of microseconds since the system clock's epoch: no delay overflows.
    using TimePoint = std::chrono::sys_time<std::chrono::microseconds>;

    Runtime();

    static TimePoint now();

    static std::unique_ptr<Runtime> instance_;
    static std::mutex initMutex_;

    std::thread thread_;
    std::mutex mutex_;
    std::multimap<TimePoint, std::function<void()>> tasks_;
    std::condition_variable condition_;
    // The last application's Main. Never read and never released: an application's objects live as
    // long as the process.
    void* mainObject_ = nullptr;
    bool hasApplication_ = false;
};

}  // namespace orvane
