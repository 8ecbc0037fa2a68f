#pragma once

#include <memory>
#include <string>

#include "orvane/inspector/Inspector.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::host {

struct Options;

// The size of the content of the inspector's window at first, in points.
constexpr platform::CGSize kInspectorSize{1000, 760};

// Opens the library of the inspector and shows the application in one window in another window,
// with what the options search for. Both windows must outlive the result. Returns null, with a
// message, if the library cannot be opened. The library stays in the process. Main thread only.
std::unique_ptr<inspector::Inspector> openInspector(const Options& options,
                                                    platform::NSWindow& application,
                                                    platform::NSWindow& window);

// Returns where the inspector's picture goes if the application's goes to `path`: next to it.
std::string inspectorPath(const std::string& path);

}  // namespace orvane::host
