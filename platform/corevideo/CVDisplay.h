#pragma once

#include <functional>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// A display that refreshes the running display links in step with its frames. A window on a desktop
// owns one.
//
// If there are several displays, one of them refreshes the links and the others are ignored. If it
// stops, for example because its window is hidden, a timer refreshes the links 20 times a second
// and the next display gets its turn. Without any display a timer refreshes them 60 times a second.
// On a virtual clock, each advance is a refresh, and displays are ignored.
//
// Main thread only.
class ORVANE_EXPORT CVDisplay {
public:
    // `requestRefresh` is called when links have been started: the display must call refresh() with
    // its next frame.
    explicit CVDisplay(std::function<void()> requestRefresh);
    ~CVDisplay();
    CVDisplay(const CVDisplay&) = delete;
    CVDisplay& operator=(const CVDisplay&) = delete;

    // Called once for each frame, before it is drawn: calls the running links back. `time` is the
    // frame's, in seconds of media time. Returns whether links are still running, that is, whether
    // the display must call again with its next frame.
    bool refresh(double time);

private:
    friend class DisplayLinks;

    std::function<void()> requestRefresh_;
};

}  // namespace orvane::platform
