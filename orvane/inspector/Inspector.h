#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::display {
class Display;
}

namespace orvane::platform {
class NSWindow;
}

namespace orvane::inspector {

// Shows in a window of its own what the application's display consists of, how its window is drawn
// and what that costs. It has a display of its own in the same process, so it reads the trees
// directly, between two frames, on the thread that changes them.
//
// The host creates it with orvane_open_inspector after the session has started, and destroys it
// before the session. Main thread only.
class Inspector {
public:
    virtual ~Inspector() = default;

    // Must be called when the content of the inspector's window has another size, in points.
    virtual void resize(platform::CGSize size) = 0;
    // Shows the current state of the application at once. It does so ten times a second of media
    // time without being called.
    virtual void refresh() = 0;
    // Chooses the first object that a search for this text finds, as soon as there is one.
    virtual void chooseFirst(const std::string& text) = 0;
    // The display in the inspector's window.
    virtual std::shared_ptr<display::Display> getDisplay() const = 0;
};

}  // namespace orvane::inspector

extern "C" {
// Creates an inspector of the application in one window, in another window, which is empty. Both
// are borrowed and must outlive it. The caller owns the result.
ORVANE_EXPORT orvane::inspector::Inspector* orvane_open_inspector(
    orvane::platform::NSWindow* application, orvane::platform::NSWindow* window);
}
