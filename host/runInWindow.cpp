#include "host/runInWindow.h"

#include "host/GTKHost.h"

namespace orvane::host {

std::optional<ExitCode> runInWindow(const Options& options, const EventScript& script) {
    if (!GTKHost::connect(options)) {
        complain("no display: rendering off-screen");
        return {};
    }
    return GTKHost(options, script).run();
}

}  // namespace orvane::host
