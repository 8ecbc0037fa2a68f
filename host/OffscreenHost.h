#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "host/TerminationSignals.h"
#include "host/openInspector.h"
#include "host/output.h"
#include "orvane/embedding/Session.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::host {

class EventScript;
struct Options;

// Runs the applications without a window: their display is rendered in memory. Main thread only.
//
// A run that ends after its output has a virtual media clock: it does not advance while work is
// left to do, and it steps from event to event and from refresh to refresh. The same run therefore
// writes the same pictures each time. With --at, no step begins before its time has passed in
// reality too, so that timed tasks and servers have as much time as they would have in a window. A
// run without output plays the events in real time and ends with a signal.
class OffscreenHost {
public:
    OffscreenHost(const Options& options, const EventScript& script);

    ExitCode run();

private:
    ExitCode writeMoment(double time);
    ExitCode writeFrames();
    ExitCode runUntilTerminated();
    ExitCode write();

    // The following take times in seconds since the start of the run.
    // Advances the virtual clock, one refresh of the display at a time.
    void advanceTo(double time);
    // Sends the events up to and including `until`, each at its own time.
    void play(double until);
    // Runs the main loop until the time has passed in reality.
    void waitUntil(double time);
    // Runs the tasks of the main queue and paints, until there is nothing left of either.
    void settle();
    bool isClosed() const { return window_.windowHost().isClosed(); }
    bool writePNG(const std::string& path) { return window_.writePNG(path); }

    const Options& options_;
    const EventScript& script_;
    std::optional<platform::CAVirtualClock> clock_;
    double start_ = 0;  // media time
    double time_ = 0;   // of the virtual clock, since the start
    std::chrono::steady_clock::time_point realStart_;
    platform::OffscreenWindow window_;
    bool terminated_ = false;
    std::function<void()> onTerminate_;
    TerminationSignals signals_;
    embedding::Session session_;
    std::size_t nextStep_ = 0;
    std::optional<platform::OffscreenWindow> inspectorWindow_;
    std::unique_ptr<inspector::Inspector> inspector_;
};

}  // namespace orvane::host
