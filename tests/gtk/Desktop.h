#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Gtk {
class Window;
}

// What a user has: a screen to look at, a pointer and keys. It stands on a real X server.
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

// False where there is no display.
bool connect();

// What the screen shows in its top left corner.
Picture screenshot(int width, int height);

// Runs xdotool with these arguments. What it does waits for the main loop.
void xdotool(const std::string& arguments);

// Gives a window the keys.
void focus(Gtk::Window& window);

// Lets the main loop run until the condition holds. False when it does not within ten seconds.
bool runUntil(const std::function<bool()>& condition);

// Lets the main loop run until it would sleep for five seconds or longer. False as runUntil.
bool runUntilAsleep();

}  // namespace orvane::tests::desktop
