#pragma once

#include <glib.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/TerminationSignals.h"
#include "host/Timer.h"
#include "host/output.h"

typedef struct _GFileMonitor GFileMonitor;

namespace orvane::host {

struct Options;

// Runs the host as a process of its own, and again each time a library in the directory of the
// applications has been built. The process keeps the place and size of its window in a file. If it
// crashes, another one shows the message until the next build. Main thread only.
class Watch {
public:
    // `arguments` is the command line of the host.
    Watch(const Options& options, const std::vector<std::string>& arguments);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // Returns when the user has closed the window, or a signal ends this process.
    ExitCode run();

private:
    void start();
    void spawn(const std::vector<std::string>& options);
    void libraryWasBuilt();
    void restart();
    void end();
    void readErrors();
    void hasEnded(int status);
    void showMessage(const std::string& reason);
    void quit(ExitCode exitCode);

    std::string directory_;
    std::vector<std::string> arguments_;
    std::string folder_;  // temporary, for the files below
    std::string messageFile_;
    std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop_;
    std::unique_ptr<GFileMonitor, void (*)(GFileMonitor*)> monitor_;
    TerminationSignals signals_;
    std::optional<Timer> settled_;
    std::optional<Timer> impatient_;
    int process_ = 0;
    int errors_ = -1;
    unsigned int errorsSource_ = 0;
    std::string lastErrors_;
    bool startsAgain_ = false;
    bool ends_ = false;
    ExitCode exitCode_ = ExitCode::Done;
};

}  // namespace orvane::host
