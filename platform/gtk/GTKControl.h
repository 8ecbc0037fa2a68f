#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "orvane/commons/Export.h"

namespace Gtk {
class Widget;
}

namespace orvane::platform {

class NSControl;
class NSView;

// The desktop's widget for a control. It shows the control's state, and stores what the user enters
// in the control. Main thread only.
//
// A widget exists only near the visible part of the window: it is created when the control comes
// close, or gets the keyboard, and destroyed when the control is far away and has no keyboard, or
// leaves its window. What must not be lost then belongs into the control.
//
// Programs and libraries add widgets for controls of their own with registerKind.
class ORVANE_EXPORT GTKControl {
public:
    // Makes the widget for a control, which outlives it. Null means that the control paints itself.
    using Create = std::function<std::unique_ptr<GTKControl>(NSControl& control)>;

    GTKControl() = default;
    virtual ~GTKControl();
    GTKControl(const GTKControl&) = delete;
    GTKControl& operator=(const GTKControl&) = delete;

    // Borrowed; owned by this object. It must have no parent at first.
    virtual Gtk::Widget& widget() = 0;
    // Copies the control's state to the widget. Called after changes of the state, and before the
    // widget receives input that follows a change.
    virtual void stateDidChange() = 0;
    // Gives the widget, or a widget in it, the keyboard.
    virtual void grabFocus();

    // Makes windows show the controls of a kind (NSControl::controlKind) with widgets. Controls
    // that are in a window already keep painting themselves. Returns false, with one line in the
    // log, if the name is empty, the function is empty, or the kind has widgets already.
    static bool registerKind(const std::string& kind, Create create);
    // Whether views of this view's kind have widgets.
    static bool isRegistered(const NSView& view);
    // Whether a kind has widgets. Opens the library that has them, if there is one.
    static bool isKindRegistered(std::string_view kind);
    // Whether a GPU executes GL for the program's windows. Where a software rasterizer would, or
    // nothing, widgets that could use GL should not.
    static bool hasHardwareGL();
    // Creates the widget for a view, which must outlive it. Returns null for a view that is not a
    // control, and for a control of a kind without widgets.
    static std::unique_ptr<GTKControl> create(NSView& view);
};

}  // namespace orvane::platform
