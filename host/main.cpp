#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <variant>

#include "host/EventScript.h"
#include "host/GTKHost.h"
#include "host/OffscreenHost.h"
#include "host/Options.h"
#include "host/output.h"

namespace {

using namespace orvane::host;

// Trees are painted and hit-tested by recursion, and an application's may be deep. The main
// thread's stack grows up to the limit in force when it grows.
void raiseStackLimit() {
    constexpr rlim_t wanted = rlim_t{64} << 20;
    rlimit limit{};
    if (getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
        limit.rlim_cur < wanted) {
        limit.rlim_cur = std::min(wanted, limit.rlim_max);
        setrlimit(RLIMIT_STACK, &limit);
    }
}

// Whether the folder can be listed; complains otherwise.
bool isReadableDirectory(const std::string& path) {
    std::error_code error;
    const std::filesystem::directory_iterator listing(path, error);
    if (error) {
        complain("can't read directory " + path + ": " + error.message());
    }
    return !error;
}

bool makeDirectory(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        complain("can't make directory " + path + ": " + error.message());
    }
    return !error;
}

bool checkDirectories(const Options& options) {
    return isReadableDirectory(options.directory) &&
           (options.resources.empty() || isReadableDirectory(options.resources)) &&
           (options.frames.empty() || makeDirectory(options.frames));
}

// Where nothing can be seen and nothing was asked for, the picture goes to a file.
ExitCode runWithoutDisplay(Options options, const EventScript& script) {
    complain("no display: rendering off-screen");
    if (options.endsByItself()) {
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
    if (!checkDirectories(options)) {
        return ExitCode::CannotDo;
    }
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
    if (GTKHost::connect()) {
        return GTKHost(options, script).run();
    }
    return runWithoutDisplay(options, script);
}

}  // namespace

int main(int argc, char** argv) {
    raiseStackLimit();
    const auto parsed = parseOptions(argc, argv);
    if (const auto* const error = std::get_if<UsageError>(&parsed)) {
        complain(error->message);
        return static_cast<int>(ExitCode::CannotDo);
    }
    const auto& options = std::get<Options>(parsed);
    if (options.help) {
        std::cout << usage;
        return 0;
    }
    if (options.version) {
        std::cout << "orvane-host " ORVANE_VERSION "\n";
        return 0;
    }
    return static_cast<int>(runHost(options));
}
