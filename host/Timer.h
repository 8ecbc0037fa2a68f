#pragma once

#include <functional>

namespace orvane::host {

// Calls a function once, from GLib's default main context, unless it is destroyed before. Main
// thread only.
class Timer {
public:
    Timer(double seconds, std::function<void()> callback);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

private:
    std::function<void()> callback_;
    unsigned int source_ = 0;
};

}  // namespace orvane::host
