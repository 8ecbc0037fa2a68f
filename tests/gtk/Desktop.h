#pragma once

#include <functional>
#include <string>

#include "tests/support/Picture.h"

namespace Gtk {
class Window;
}

// What a user has: a screen, a pointer and a keyboard, of a real X server.
namespace orvane::tests::desktop {

// Initializes GTK. Throws if there is no display.
struct Connection {
    Connection();
};

// Returns what the screen shows in its top left corner, as 0x00RRGGBB.
Picture screenshot(int width, int height);

// Runs xdotool with these arguments, in which places of the pointer are in points. The events that
// it causes wait for the main loop.
void xdotool(const std::string& arguments);

// Gives a window the keyboard focus.
void focus(Gtk::Window& window);

// Runs the main loop until the condition is true. Returns false after some seconds.
bool runUntil(const std::function<bool()>& condition, double seconds = 10);

// Runs the main loop until it would sleep for five seconds or longer. Returns false after ten.
bool runUntilAsleep();

}  // namespace orvane::tests::desktop
