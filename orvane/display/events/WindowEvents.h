#pragma once

#include "orvane/notification/Listener.h"

namespace orvane::display {

class Window;

namespace events {

// The answer of a listener to a CloseRequestEvent.
enum class CloseDecision {
    Close,  // the listener has no objection
    Hold    // the window stays open; the application may call Window::quit later
};

// The user wants to close the window, or the application has called Window::requestClose. It is
// sent to the window. The window closes unless a listener answers Hold: an application that has
// something to save holds the window, saves, and calls Window::quit when it is done. All listeners
// are called. One that throws has no objection. Main thread.
struct CloseRequestEvent {
    using listener_type = notification::Listener<Window, CloseRequestEvent, CloseDecision>;
};

// The window fills the screen now, or no longer. It is sent to the window. Main thread.
struct FullScreenChangedEvent {
    using listener_type = notification::Listener<Window, FullScreenChangedEvent, void>;

    bool isFullScreen = false;
};

}  // namespace events
}  // namespace orvane::display
