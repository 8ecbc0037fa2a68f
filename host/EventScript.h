#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/appkit/NSEvent.h"

namespace orvane::host {

// The pointer events of a file, to be played to a window: a line is `SECONDS down|move|up X Y`, the
// place in points of the window's content, y down; # starts a comment. Events come in order of
// time, those of one time in the order of the file.
class EventScript {
public:
    // What is wrong with the file, its line named.
    struct Error {
        std::string message;
    };

    static std::variant<EventScript, Error> load(const std::string& path);

    // The timestamp of an event is its time since the start of the run.
    const std::vector<platform::NSEvent>& events() const { return events_; }

private:
    std::vector<platform::NSEvent> events_;
};

}  // namespace orvane::host
