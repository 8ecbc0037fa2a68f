#include "tests/host/XWindow.h"

#include <X11/Xlib.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace orvane::tests {

namespace {

using Connection = std::unique_ptr<Display, decltype(&XCloseDisplay)>;

Connection connect() {
    Connection display(XOpenDisplay(nullptr), &XCloseDisplay);
    if (!display) {
        throw std::runtime_error("no X server");
    }
    return display;
}

}  // namespace

XWindow::XWindow() {
    const std::unique_ptr<std::FILE, decltype(&pclose)> search(
        popen("xdotool search --sync --onlyvisible --name Orvane", "r"), &pclose);
    if (!search || std::fscanf(search.get(), "%lu", &id_) != 1) {
        throw std::runtime_error("no window");
    }
}

void XWindow::resize(int width, int height) const {
    const Connection display = connect();
    XResizeWindow(display.get(), id_, static_cast<unsigned>(width), static_cast<unsigned>(height));
}

void XWindow::close() const {
    const Connection display = connect();
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = id_;
    event.xclient.format = 32;
    event.xclient.message_type = XInternAtom(display.get(), "WM_PROTOCOLS", False);
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(display.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(display.get(), id_, False, NoEventMask, &event);
}

}  // namespace orvane::tests
