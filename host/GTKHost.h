#pragma once

#include <glib.h>
#include <gtkmm/window.h>

#include <memory>
#include <optional>

#include "host/GTKInspector.h"
#include "host/Playback.h"
#include "host/TerminationSignals.h"
#include "host/Timer.h"
#include "host/WindowState.h"
#include "host/output.h"
#include "orvane/embedding/Session.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/gtk/GTKToplevel.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::host {

class EventScript;
struct Options;

// Runs the applications in a window on the desktop, until the window is closed or the output that
// was asked for is written. Call connect() first. Main thread only.
class GTKHost {
public:
    // Initializes GTK. Returns false if there is no display. On X11, a whole --scale becomes the
    // scale of the desktop for this process, so that the window and the controls in it have that
    // scale too. A run that ends after its output leaves the desktop's scale, because the screen
    // would limit the size of its picture.
    static bool connect(const Options& options);

    GTKHost(const Options& options, const EventScript& script);
    ~GTKHost();
    GTKHost(const GTKHost&) = delete;
    GTKHost& operator=(const GTKHost&) = delete;

    ExitCode run();

private:
    void begin();
    // Stores where the window is and how large, if a file for it was given.
    void keepWindowState();
    void placeWindow();
    // Writes the output with the next frame.
    void becomeDue();
    // Called after each frame.
    void frameShown();
    void quit() {
        hasQuit_ = true;
        g_main_loop_quit(loop_.get());
    }

    const Options& options_;
    const EventScript& script_;
    std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop_;
    platform::GTKWindow content_;
    Gtk::Window window_;
    TerminationSignals signals_;
    platform::GTKToplevel toplevel_;
    std::optional<platform::NSScriptedDesktop> scriptedDesktop_;
    embedding::Session session_;
    std::optional<GTKInspector> inspector_;
    std::optional<Playback> playback_;
    std::optional<Timer> timer_;
    std::optional<WindowState> windowState_;
    std::optional<Timer> windowStateTimer_;
    bool hasQuit_ = false;
    bool due_ = false;
    ExitCode exitCode_ = ExitCode::Done;
};

}  // namespace orvane::host
