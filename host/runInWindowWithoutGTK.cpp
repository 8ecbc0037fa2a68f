#include "host/runInWindow.h"

namespace orvane::host {

std::optional<ExitCode> runInWindow(const Options&, const EventScript&) {
    complain("built without GTK: rendering off-screen");
    return {};
}

}  // namespace orvane::host
