#pragma once

#include <memory>

struct _XDisplay;

namespace orvane::tests {

// The window of the running host, controlled from outside. The constructor waits for the window.
class XWindow {
public:
    XWindow();

    void resize(unsigned width, unsigned height) const;
    // Requests that it closes, as a window manager does.
    void close() const;

private:
    std::unique_ptr<_XDisplay, int (*)(_XDisplay*)> display_;
    unsigned long id_ = 0;
};

}  // namespace orvane::tests
