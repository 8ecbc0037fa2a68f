#include "tests/gtk/Desktop.h"

#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "platform/gtk/GTKWindow.h"

// Last: their macros break others' headers.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/x11/gdkx.h>

namespace orvane::tests::desktop {

Connection::Connection() {
    static const bool connected = platform::GTKWindow::initialize();
    if (!connected) {
        throw std::runtime_error("no display");
    }
}

Picture screenshot(int width, int height) {
    gdk_display_sync(gdk_display_get_default());
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr),
                                                                     &XCloseDisplay);
    XImage* const image =
        XGetImage(display.get(), XDefaultRootWindow(display.get()), 0, 0,
                  static_cast<unsigned>(width), static_cast<unsigned>(height), ~0UL, ZPixmap);
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.pixels.push_back(static_cast<std::uint32_t>(image->f.get_pixel(image, x, y)) &
                                     0xFFFFFF);
        }
    }
    image->f.destroy_image(image);
    return picture;
}

void xdotool(const std::string& arguments) {
    // X servers count pixels.
    const char* const scale = std::getenv("GDK_SCALE");
    const int pixelsPerPoint = scale != nullptr ? std::stoi(scale) : 1;
    std::string command = "xdotool";
    std::istringstream words(arguments);
    int coordinates = 0;  // that follow
    for (std::string word; words >> word;) {
        const bool isCoordinate = coordinates > 0;
        coordinates = word == "mousemove" ? 2 : std::max(coordinates - 1, 0);
        command += ' ' + (isCoordinate ? std::to_string(std::stoi(word) * pixelsPerPoint) : word);
    }
    int status = -1;
    ASSERT_TRUE(g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, &status, nullptr));
    ASSERT_EQ(status, 0) << arguments;
}

void focus(Gtk::Window& window) {
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window.gobj()));
    xdotool("windowfocus " + std::to_string(gdk_x11_surface_get_xid(surface)));
}

bool runUntil(const std::function<bool()>& condition, double seconds) {
    bool late = false;
    sigc::connection timeout = Glib::signal_timeout().connect(
        [&late] {
            late = true;
            return false;
        },
        static_cast<unsigned>(seconds * 1000));
    while (!condition() && !late) {
        g_main_context_iteration(nullptr, TRUE);
    }
    timeout.disconnect();
    return !late;
}

bool runUntilAsleep() {
    return runUntil([] {
        GMainContext* const context = g_main_context_default();
        int priority = 0;
        int timeout = -1;
        g_main_context_acquire(context);
        const bool ready = g_main_context_prepare(context, &priority) != FALSE;
        g_main_context_query(context, G_MAXINT, &timeout, nullptr, 0);
        g_main_context_release(context);
        return !ready && (timeout < 0 || timeout > 5000);
    });
}

}  // namespace orvane::tests::desktop
