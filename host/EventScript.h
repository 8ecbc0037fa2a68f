#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace orvane::platform {
class NSWindow;
}

namespace orvane::host {

// What a user does, as the lines of a file; docs/event-scripts.md describes the format. The steps
// are sorted by time; steps of the same time keep the order of the file.
class EventScript {
public:
    struct Step {
        double seconds = 0;  // since the start of the run
        // Does it to a window; `timestamp` is in seconds of media time.
        std::function<void(platform::NSWindow& window, double timestamp)> perform;
    };
    // What is wrong with the file; the message names the line.
    struct Error {
        std::string message;
    };

    static std::variant<EventScript, Error> load(const std::string& path);

    const std::vector<Step>& steps() const { return steps_; }
    // Whether a line answers for the desktop, so that the desktop's services must be those of
    // NSScriptedDesktop.
    bool replacesDesktop() const { return replacesDesktop_; }

private:
    std::vector<Step> steps_;
    bool replacesDesktop_ = false;
};

}  // namespace orvane::host
