#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane {

namespace platform {
class CATimer;
}

// A task on the main thread that runs once or repeats, and can be cancelled: what an application
// uses to change the display at times. Runtime::run is for tasks on the runtime's own thread.
//
//     clock_.start(1000, [this] { showTime(); });
//
// The times are those of the display's clock, so an off-screen host shows the same picture at the
// same time in every run. A repeated task keeps its rhythm; when the main thread was busy for
// several periods, it runs once and continues with the next. What a task throws is logged.
//
// The destructor stops the timer: a task may refer to the object that owns it. Main thread only.
class ORVANE_EXPORT Timer {
public:
    Timer();
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Runs the task after each `period`, in milliseconds (0 counts as 1), for the first time after
    // one period. Replaces what the timer did before. An empty task only stops the timer.
    void start(unsigned period, std::function<void()> task);
    // Runs the task once, after `delay` milliseconds.
    void startOnce(unsigned delay, std::function<void()> task);
    // Cancels the task: no run follows. May be called from the task, which then returns normally
    // and is destroyed afterwards.
    void stop();
    // Whether a run is to come.
    bool isRunning() const;

private:
    std::unique_ptr<platform::CATimer> timer_;
};

}  // namespace orvane
