#pragma once

#include <memory>

namespace Gtk {
class Widget;
}

namespace orvane::platform {

class NSControl;
class NSView;

// The desktop's own widget for a control, kept in step with it: what the application sets shows in
// the widget, what the user does arrives in the control. It lives no longer than the control is in
// its window. Main thread only.
class GTKControl {
public:
    virtual ~GTKControl() = default;

    virtual Gtk::Widget& widget() = 0;
    // Takes the control's state over into the widget.
    virtual void stateDidChange() = 0;

    // Whether the desktop has a widget for the view.
    static bool realizes(const NSView& view);
    // Null when it has none.
    static std::unique_ptr<GTKControl> create(NSView& view);
};

}  // namespace orvane::platform
