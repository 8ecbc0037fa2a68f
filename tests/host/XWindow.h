#pragma once

#include <string>

namespace orvane::tests {

// The window of the host that is running, seen from outside. Waits until it is there.
class XWindow {
public:
    XWindow();

    void resize(int width, int height) const;
    // Asks it to close, as a window manager does.
    void close() const;

private:
    unsigned long id_ = 0;
};

}  // namespace orvane::tests
