#pragma once

#include <optional>

#include "host/output.h"

namespace orvane::host {

class EventScript;
struct Options;

// Runs the applications in a window on the desktop, until the window is closed or the output that
// was asked for is written. Returns empty, with a one-line message, if there is no display or the
// host was built without GTK.
std::optional<ExitCode> runInWindow(const Options& options, const EventScript& script);

}  // namespace orvane::host
