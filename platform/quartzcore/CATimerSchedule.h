#pragma once

#include <functional>

#include "platform/quartzcore/CATimer.h"

namespace orvane::platform {

// What the timeline knows of a timer that was started.
struct CATimer::Schedule {
    double due;     // media time, in seconds
    double period;  // in seconds; 0 for one call
    std::function<void()> function;
    bool isRunning = true;
};

}  // namespace orvane::platform
