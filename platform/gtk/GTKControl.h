#pragma once

#include <memory>

namespace Gtk {
class Widget;
}

namespace orvane::platform {

class NSControl;
class NSView;

// The desktop's widget for a control. It shows the control's state, and stores what the user enters
// in the control. It is destroyed when the control leaves its window. Main thread only.
class GTKControl {
public:
    virtual ~GTKControl() = default;

    // Borrowed; owned by this object.
    virtual Gtk::Widget& widget() = 0;
    // Copies the control's state to the widget.
    virtual void stateDidChange() = 0;

    // Whether the desktop has a widget for the view.
    static bool realizes(const NSView& view);
    // Creates the widget for a view, which must outlive it. Returns null if the desktop has none.
    static std::unique_ptr<GTKControl> create(NSView& view);
};

}  // namespace orvane::platform
