#pragma once

#include <functional>

namespace orvane::host {

// Turns the first SIGINT or SIGTERM into a call on the main thread, from GLib's default main
// context. A second signal ends the process, so that an application whose main() never returns
// cannot keep it alive. Create one object at a time.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onTerminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::function<void()> onTerminate_;
    int descriptor_ = -1;
    unsigned int source_ = 0;
};

}  // namespace orvane::host
