#pragma once

#include <functional>
#include <optional>

#include "host/TerminationSignals.h"
#include "host/output.h"
#include "orvane/embedding/Session.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::host {

class EventScript;
struct Options;

// Runs the applications with nothing to see: their display is rendered in memory.
//
// Where the run ends by itself, with no moment named, it is as fast as the machine and the same
// each time: media time is virtual, stands still while something is left to do, and goes from event
// to event and from frame to frame. Otherwise time is the world's.
class OffscreenHost {
public:
    OffscreenHost(const Options& options, const EventScript& script);

    ExitCode run();

private:
    ExitCode runVirtually();
    ExitCode writeFrames();
    ExitCode runInRealTime();

    // Virtual time; moments are seconds since the beginning of the run.
    // Lets time pass up to a moment, a refresh of the display at a time.
    void advanceTo(double time);
    // Sends the events up to a moment, each at its own.
    void play(double until);
    // Runs what waits on the main queue and paints, until nothing of either is left.
    void settle();
    bool writePNG(const std::string& path) { return window_.writePNG(path); }

    const Options& options_;
    const EventScript& script_;
    std::optional<platform::CAVirtualClock> clock_;
    double start_ = 0;  // the virtual clock's at the beginning of the run
    double time_ = 0;   // since then
    platform::OffscreenWindow window_;
    bool terminated_ = false;
    std::function<void()> onTerminate_;
    TerminationSignals signals_;
    embedding::Session session_;
    std::size_t nextEvent_ = 0;
};

}  // namespace orvane::host
