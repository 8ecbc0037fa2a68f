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

// The runtime of the process: it starts the applications and runs their timed tasks, one at a time,
// on a thread of its own. A host calls init_orvane(), GetInstance() and initSwift(), in this order,
// and then runs the loop that drains the main queue.
class ORVANE_EXPORT Runtime {
public:
    // Made by the first call, on any thread: the application's folders on disk exist when it
    // returns. Throws std::system_error when the thread of the tasks cannot be started. The pointer
    // is valid until DeleteInstance() or the end of the process.
    static Runtime* GetInstance();
    // Waits for the task that runs and for those already due; drops the others. A task must not
    // call GetInstance() meanwhile, nor wait for the thread that is in here. Does nothing when
    // there is no instance, and nothing in a task, which cannot wait for its own end.
    static void DeleteInstance();

    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;
    ~Runtime();

    // Queues a task to run once, `delay` milliseconds from now or later. From any thread, also from
    // a task. The function is copied and destroyed under the queue's lock: nothing that it captured
    // may call run() while being copied or destroyed. What it captured may stay alive until the
    // next task. An empty function ends the thread, for good, when its time comes. A task that
    // throws terminates the process.
    void run(std::function<void()> task, unsigned int delay);

    // Starts every application library in the directory, one after the other, on the calling
    // thread, which is the main thread: makes the class Main of lib<name>.dylib and calls its
    // main(). What goes wrong is reported on standard error and nowhere else.
    void initSwift(const std::string& directory);

    // Ends the timed tasks for good: waits for the one that runs and for those already due, and
    // leaves the others undone. For hosts, before DeleteInstance(): no lock is held here, so tasks
    // may call GetInstance() to the last. Called in a task it cannot wait for its own end, and
    // returns at once. On one thread at a time.
    void stop();

    // Whether initSwift has started an application, be it one whose main() threw. For hosts, which
    // have nothing to show otherwise. Main thread only.
    [[nodiscard]] bool hasApplication() const { return hasApplication_; }

private:
    // Microseconds of the system's clock since its epoch, 64 bits wide: no delay overflows.
    using TimePoint = std::chrono::sys_time<std::chrono::microseconds>;

    Runtime();

    static void initThread();
    static void cleanupThread();
    static TimePoint now();

    void loop();
    void loadSwiftLibrary(const std::string& directory);

    static std::unique_ptr<Runtime> instance_;
    static std::mutex initMutex_;

    std::thread thread_;
    std::mutex mutex_;
    std::multimap<TimePoint, std::function<void()>> tasks_;
    std::condition_variable condition_;
    // The last application's Main. Never read and never released: what an application left behind
    // is its own code and objects, and lives as long as the process.
    void* mainObject_ = nullptr;
    bool hasApplication_ = false;
};

}  // namespace orvane
