#include "tests/host/XWindow.h"

#include <X11/Xlib.h>

#include <cstdio>
#include <stdexcept>

namespace orvane::tests {

XWindow::XWindow() : display_(XOpenDisplay(nullptr), &XCloseDisplay) {
    const std::unique_ptr<std::FILE, decltype(&pclose)> search(
        popen("xdotool search --sync --onlyvisible --name Orvane", "r"), &pclose);
    if (!display_ || !search || std::fscanf(search.get(), "%lu", &id_) != 1) {
        throw std::runtime_error("no window");
    }
}

void XWindow::resize(unsigned width, unsigned height) const {
    XResizeWindow(display_.get(), id_, width, height);
    XFlush(display_.get());
}

void XWindow::close() const {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = id_;
    event.xclient.format = 32;
    event.xclient.message_type = XInternAtom(display_.get(), "WM_PROTOCOLS", False);
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(display_.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(display_.get(), id_, False, NoEventMask, &event);
    XFlush(display_.get());
}

}  // namespace orvane::tests
