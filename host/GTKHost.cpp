#include "host/GTKHost.h"

#include <gdkmm/frameclock.h>
#include <gtk/gtk.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "host/EventScript.h"
#include "host/Options.h"
#include "host/showMessage.h"

namespace orvane::host {

namespace {

constexpr double kWindowStateSeconds = 0.25;

}  // namespace

bool GTKHost::connect(const Options& options) {
    constexpr char kScaleVariable[] = "GDK_SCALE";
    const bool isScaled = options.scale && *options.scale == std::floor(*options.scale) &&
                          !options.endsAfterOutput() && g_getenv(kScaleVariable) == nullptr;
    if (isScaled) {
        g_setenv(kScaleVariable, std::to_string(std::lround(*options.scale)).c_str(), TRUE);
    }
    const bool isConnected = platform::GTKWindow::initialize();
    if (isScaled) {
        // Programs that this process starts must not inherit it.
        g_unsetenv(kScaleVariable);
    }
    return isConnected;
}

GTKHost::GTKHost(const Options& options, const EventScript& script)
    : options_(options),
      script_(script),
      loop_(g_main_loop_new(nullptr, FALSE), &g_main_loop_unref),
      content_(options.size, options.scale),
      signals_([this] { quit(); }),
      toplevel_(window_, content_, [this] { quit(); }),
      session_(content_, options.directory, options.resources) {
    if (script.replacesDesktop()) {
        platform::NSDesktop::setCurrent(&scriptedDesktop_.emplace());
    }
    content_.setResizeHandler([this](platform::CGSize size) { session_.resize(size); });
    window_.set_title(options.title);
    window_.set_child(content_.widget());
}

GTKHost::~GTKHost() {
    window_.unset_child();
}

ExitCode GTKHost::run() {
    if (!options_.message.empty()) {
        std::ostringstream text;
        text << std::ifstream(options_.message).rdbuf();
        showMessage(text.str());
    } else if (!session_.start()) {
        return ExitCode::NoApplication;
    }
    if (hasQuit_) {  // the application did not want to be shown
        return ExitCode::Done;
    }
    // Otherwise the first control receives the focus, with its text selected.
    window_.set_focus(content_.widget());
    window_.signal_map().connect([this] { begin(); });
    if (!options_.windowState.empty()) {
        windowState_ = readWindowState(options_.windowState);
        gtk_widget_realize(GTK_WIDGET(window_.gobj()));
    }
    placeWindow();
    window_.present();
    // A window manager may have placed the window when it was mapped.
    placeWindow();
    if (options_.inspects) {
        inspector_.emplace(options_, content_);
        if (!inspector_->isOpen()) {
            return ExitCode::CannotDo;
        }
    }
    g_main_loop_run(loop_.get());
    keepWindowState();
    return exitCode_;
}

void GTKHost::begin() {
    windowStateTimer_.emplace(kWindowStateSeconds, [this] { keepWindowState(); });
    // Time starts when the window is visible.
    playback_.emplace(script_, content_, [this] {
        if (!options_.at) {
            becomeDue();
        }
    });
    if (!options_.endsAfterOutput()) {
        return;
    }
    if (options_.at) {
        timer_.emplace(*options_.at, [this] { becomeDue(); });
    }
    g_signal_connect_swapped(content_.widget().get_frame_clock()->gobj(), "after-paint",
                             G_CALLBACK(+[](GTKHost* host) { host->frameShown(); }), this);
}

void GTKHost::placeWindow() {
    if (windowState_ && windowState_->place) {
        moveTo(window_, *windowState_->place);
    }
}

void GTKHost::keepWindowState() {
    if (options_.windowState.empty()) {
        return;
    }
    const platform::CGSize size = content_.contentSize();
    const WindowState state{{std::round(size.width), std::round(size.height)}, placeOf(window_)};
    if (state != windowState_) {
        windowState_ = state;
        writeWindowState(options_.windowState, state);
    }
    // Moves are not reported; and a crash leaves no time to look.
    windowStateTimer_.emplace(kWindowStateSeconds, [this] { keepWindowState(); });
}

void GTKHost::becomeDue() {
    due_ = true;
    content_.widget().queue_draw();
}

void GTKHost::frameShown() {
    // Only after a frame is it certain that nothing waits to be drawn.
    if (due_ && (!content_.needsDisplay() || content_.isAnimating()) &&
        (!inspector_ || inspector_->isShown())) {
        due_ = false;
        exitCode_ = writeOutput(options_, [this](const std::string& path) {
            return content_.writePNG(path) &&
                   (!inspector_ || inspector_->writePNG(inspectorPath(path)));
        });
        quit();
    }
}

}  // namespace orvane::host
