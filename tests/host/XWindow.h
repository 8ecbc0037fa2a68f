#pragma once

#include <memory>

struct _XDisplay;

namespace orvane::tests {

// The window of the host that is running, seen from outside. Waits until it is there.
class XWindow {
public:
    XWindow();

    void resize(unsigned width, unsigned height) const;
    // Asks it to close, as a window manager does.
    void close() const;

private:
    std::unique_ptr<_XDisplay, int (*)(_XDisplay*)> display_;
    unsigned long id_ = 0;
};

}  // namespace orvane::tests
