#pragma once

#include <functional>
#include <memory>
#include <string>

namespace orvane::platform {
class CGImageSource;
}

namespace orvane::display::graphics::quartz {

// Loads a picture on a background thread, and then calls `done` on the main thread, with null if
// that failed; the log says why. The address is a path, or begins with "file:", "data:", "http:" or
// "https:". Pictures of servers are kept on disk (ResponseCache). Any thread.
void loadPicture(const std::string& address,
                 std::function<void(std::shared_ptr<platform::CGImageSource>)> done);

}  // namespace orvane::display::graphics::quartz
