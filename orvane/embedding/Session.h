#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::embedding {

class HostView;

// The runtime and its display in a window, from start to clean end. One a process. Main thread
// only.
class ORVANE_EXPORT Session {
public:
    // Starts the runtime and puts the display's view into the window, as large as its content.
    // `resources` is the resource folder for this run; empty leaves the user's own setting. The
    // window is borrowed.
    Session(platform::NSWindow& window, const std::string& resources);
    // Ends the timed tasks, then takes the display down. Those tasks may be waiting for the main
    // queue: it is drained meanwhile.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Runs the `main` of every application in the directory. False when there was none to run; the
    // runtime has said why.
    bool start(const std::string& directory);

    // The window's content has this size now, in points. Tells the display.
    void resize(platform::CGSize size);

private:
    void layOut(platform::CGSize size);

    platform::NSWindow& window_;
    std::shared_ptr<HostView> view_;
};

}  // namespace orvane::embedding
