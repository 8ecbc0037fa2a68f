// X11's part of WindowState: its headers define macros that break others.
#include <gdk/gdk.h>
#include <gtkmm/window.h>

#include "host/WindowState.h"

#ifdef GDK_WINDOWING_X11
#include <X11/Xatom.h>
#include <gdk/x11/gdkx.h>
#endif

namespace orvane::host {

#ifdef GDK_WINDOWING_X11

namespace {

struct XWindow {
    Display* display = nullptr;
    Window window = 0;
};

std::optional<XWindow> xWindowOf(Gtk::Window& window) {
    const auto surface = window.get_surface();
    if (!surface || !GDK_IS_X11_SURFACE(surface->gobj())) {
        return {};
    }
    return XWindow{GDK_SURFACE_XDISPLAY(surface->gobj()), GDK_SURFACE_XID(surface->gobj())};
}

// The width of the frame that the window manager has added at the left and at the top.
platform::CGPoint frameOf(const XWindow& x) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    platform::CGPoint frame;
    if (XGetWindowProperty(x.display, x.window, XInternAtom(x.display, "_NET_FRAME_EXTENTS", False),
                           0, 4, False, XA_CARDINAL, &type, &format, &count, &rest,
                           &data) == Success &&
        data != nullptr) {
        // In the order left, right, top, bottom; Xlib stores 32 bits in a long.
        if (format == 32 && count == 4) {
            const auto* const extents = reinterpret_cast<const long*>(data);
            frame = {static_cast<double>(extents[0]), static_cast<double>(extents[2])};
        }
        XFree(data);
    }
    return frame;
}

}  // namespace

std::optional<platform::CGPoint> placeOf(Gtk::Window& window) {
    const auto x = xWindowOf(window);
    if (!x) {
        return {};
    }
    int left = 0;
    int top = 0;
    Window child = 0;
    XTranslateCoordinates(x->display, x->window, DefaultRootWindow(x->display), 0, 0, &left, &top,
                          &child);
    const platform::CGPoint frame = frameOf(*x);
    return platform::CGPoint{left - frame.x, top - frame.y};
}

void moveTo(Gtk::Window& window, platform::CGPoint place) {
    if (const auto x = xWindowOf(window)) {
        XMoveWindow(x->display, x->window, static_cast<int>(place.x), static_cast<int>(place.y));
        XFlush(x->display);
    }
}

#else

std::optional<platform::CGPoint> placeOf(Gtk::Window&) {
    return {};
}

void moveTo(Gtk::Window&, platform::CGPoint) {}

#endif

}  // namespace orvane::host
