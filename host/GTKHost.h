#pragma once

#include <glib.h>
#include <gtkmm/window.h>

#include <memory>
#include <optional>

#include "host/Playback.h"
#include "host/TerminationSignals.h"
#include "host/Timer.h"
#include "host/output.h"
#include "orvane/embedding/Session.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::host {

class EventScript;
struct Options;

// Runs the applications in a window on the desktop, until it is closed or what was asked for is
// written. connect() must have succeeded.
class GTKHost {
public:
    // Whether there is a desktop to show a window on. Nothing else needs one.
    static bool connect();

    GTKHost(const Options& options, const EventScript& script);
    ~GTKHost();
    GTKHost(const GTKHost&) = delete;
    GTKHost& operator=(const GTKHost&) = delete;

    ExitCode run();

private:
    void begin();
    // The moment has come to write what was asked for: with the next frame.
    void becomeDue();
    void frameShown();
    void quit() { g_main_loop_quit(loop_.get()); }

    const Options& options_;
    const EventScript& script_;
    std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop_;
    platform::GTKWindow content_;
    Gtk::Window window_;
    TerminationSignals signals_;
    embedding::Session session_;
    std::optional<Playback> playback_;
    std::optional<Timer> timer_;
    bool due_ = false;
    ExitCode exitCode_ = ExitCode::Done;
};

}  // namespace orvane::host
