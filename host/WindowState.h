#pragma once

#include <optional>
#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace Gtk {
class Window;
}

namespace orvane::host {

// Where a window is, and how large its content is.
struct WindowState {
    platform::CGSize size;  // of the content, in points
    // The top left corner of the window with its frame, in pixels of the screen; empty where the
    // desktop keeps it to itself (Wayland).
    std::optional<platform::CGPoint> place;

    friend bool operator==(const WindowState&, const WindowState&) = default;
};

// Returns empty if the file does not contain a state.
std::optional<WindowState> readWindowState(const std::string& path);
// Returns false if the file could not be written.
bool writeWindowState(const std::string& path, const WindowState& state);

// Main thread only; the window must be realized.
std::optional<platform::CGPoint> placeOf(Gtk::Window& window);
void moveTo(Gtk::Window& window, platform::CGPoint place);

}  // namespace orvane::host
