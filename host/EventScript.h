#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/appkit/NSEvent.h"

namespace orvane::host {

// The pointer and key events of a file; docs/event-scripts.md describes the format. The events are
// sorted by time; events of the same time keep the order of the file.
class EventScript {
public:
    // What is wrong with the file; the message names the line.
    struct Error {
        std::string message;
    };

    static std::variant<EventScript, Error> load(const std::string& path);

    // The timestamp of an event is in seconds since the start of the run.
    const std::vector<platform::NSEvent>& events() const { return events_; }

private:
    std::vector<platform::NSEvent> events_;
};

}  // namespace orvane::host
