#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <variant>

#include "host/EventScript.h"
#include "host/OffscreenHost.h"
#include "host/Options.h"
#include "host/Watch.h"
#include "host/WindowState.h"
#include "host/output.h"
#include "host/runInWindow.h"
#include "orvane/commons/Trace.h"

namespace {

using namespace orvane;
using namespace orvane::host;

// Painting and hit testing recurse, and an application's trees may be deep. The main thread's stack
// grows up to the limit that is in force at that time.
void raiseStackLimit() {
    constexpr rlim_t kWanted = rlim_t{64} << 20;
    rlimit limit{};
    if (getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
        limit.rlim_cur < kWanted) {
        limit.rlim_cur = std::min(kWanted, limit.rlim_max);
        setrlimit(RLIMIT_STACK, &limit);
    }
}

// Returns whether the directory can be listed; complains otherwise.
bool isReadableDirectory(const std::string& path) {
    std::error_code error;
    const std::filesystem::directory_iterator listing(path, error);
    if (error) {
        complain("cannot read directory " + path + ": " + error.message());
    }
    return !error;
}

bool createDirectory(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        complain("cannot create directory " + path + ": " + error.message());
    }
    return !error;
}

bool checkDirectories(const Options& options) {
    return isReadableDirectory(options.directory) &&
           (options.resources.empty() || isReadableDirectory(options.resources)) &&
           (options.frames.empty() || createDirectory(options.frames));
}

// Without a window, a run that was not told what to write writes its picture to a file.
ExitCode runWithoutWindow(Options options, const EventScript& script) {
    if (options.endsAfterOutput()) {
        return OffscreenHost(options, script).run();
    }
    options.snapshot = std::filesystem::absolute("orvane.png").string();
    const ExitCode exitCode = OffscreenHost(options, script).run();
    if (exitCode == ExitCode::Done) {
        std::cout << "wrote " << options.snapshot << '\n';
    }
    return exitCode;
}

ExitCode runHost(const Options& options) {
    EventScript script;
    if (!options.events.empty()) {
        auto loaded = EventScript::load(options.events);
        if (const auto* const error = std::get_if<EventScript::Error>(&loaded)) {
            complain(error->message);
            return ExitCode::CannotDo;
        }
        script = std::get<EventScript>(std::move(loaded));
    }
    if (options.offscreen || !options.frames.empty()) {
        return OffscreenHost(options, script).run();
    }
    if (const std::optional<ExitCode> exitCode = runInWindow(options, script)) {
        return *exitCode;
    }
    return runWithoutWindow(options, script);
}

// Runs the host as the options say, and writes the trace if one was asked for.
ExitCode runTraced(const Options& options) {
    if (options.trace.empty()) {
        return runHost(options);
    }
    const bool started = commons::Trace::start(options.trace);
    const ExitCode exitCode = started ? runHost(options) : ExitCode::CannotDo;
    if (!started || !commons::Trace::stop()) {
        complain("cannot write " + options.trace);
        return ExitCode::CannotDo;
    }
    return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
    raiseStackLimit();
    const auto parsed = parseOptions(argc, argv);
    if (const auto* const error = std::get_if<UsageError>(&parsed)) {
        complain(error->message);
        return static_cast<int>(ExitCode::CannotDo);
    }
    auto options = std::get<Options>(parsed);
    if (const auto state = readWindowState(options.windowState)) {
        options.size = state->size;
    }
    if (options.help) {
        std::cout << kUsage;
        return 0;
    }
    if (options.version) {
        std::cout << "orvane-host " ORVANE_VERSION "\n";
        return 0;
    }
    if (!checkDirectories(options)) {
        return static_cast<int>(ExitCode::CannotDo);
    }
    if (options.watch) {
        return static_cast<int>(Watch(options, {argv, argv + argc}).run());
    }
    for (const services::Family family : options.denied) {
        services::denyFamily(family);
    }
    return static_cast<int>(runTraced(options));
}
