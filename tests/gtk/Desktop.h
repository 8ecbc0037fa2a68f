#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Gtk {
class Window;
}

// What a user has: a screen, a pointer and a keyboard, of a real X server.
namespace orvane::tests::desktop {

// A picture, one 0x00RRGGBB a pixel.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

// Initializes GTK. Returns false if there is no display.
bool connect();

// Returns what the screen shows in its top left corner.
Picture screenshot(int width, int height);

// Runs xdotool with these arguments. The events that it causes wait for the main loop.
void xdotool(const std::string& arguments);

// Gives a window the keyboard focus.
void focus(Gtk::Window& window);

// Runs the main loop until the condition is true. Returns false after ten seconds.
bool runUntil(const std::function<bool()>& condition);

// Runs the main loop until it would sleep for five seconds or longer. Returns false after ten.
bool runUntilAsleep();

}  // namespace orvane::tests::desktop
