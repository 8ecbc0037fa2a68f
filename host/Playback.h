#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "host/EventScript.h"
#include "host/Timer.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::host {

// Sends the events of a script to a window in real time, from GLib's default main context. Main
// thread only.
class Playback {
public:
    // Starts immediately. `onFinished` is called from the loop after the last event, and also if
    // the script is empty. Both references must outlive this object.
    Playback(const EventScript& script, platform::NSWindow& window,
             std::function<void()> onFinished);

private:
    void advance();
    void waitForNext();

    const std::vector<EventScript::Step>& steps_;
    platform::NSWindow& window_;
    std::function<void()> onFinished_;
    double start_;  // media time
    std::size_t next_ = 0;
    std::optional<Timer> timer_;
};

}  // namespace orvane::host
