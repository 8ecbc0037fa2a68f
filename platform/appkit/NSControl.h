#pragma once

#include <string>
#include <string_view>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// A native control: a view that holds the control's state and its kind. A desktop window that has a
// widget for the kind shows the control with it and keeps the two in sync:
// didChangeView(kNSViewStateChanged) reports changes of the state, and the window stores the user's
// input with the setters. Elsewhere, also off-screen, the control paints a plain approximation of
// itself.
class ORVANE_EXPORT NSControl : public NSView {
public:
    // The name under which a window finds the widget for the control, for example with
    // GTKControl::registerKind. Must be constant; the text must outlive the control.
    virtual std::string_view controlKind() const = 0;
    // Whether the control gets the keys that its widget has not handled. False for a control whose
    // widget does everything that the control does without one. Must be constant.
    virtual bool takesKeysOfWidget() const { return false; }
    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }

    // Whether the windows of this process show controls of a kind with widgets. Opens the library
    // with the widgets, if they are in one of its own. False where there are no such windows.
    static bool hasWidgets(std::string_view kind);
    // Sets what answers that. Called by the first window that shows controls with widgets.
    static void setWidgetSource(bool (*hasWidgets)(std::string_view kind));

    // What assistive technology calls the control; empty for none.
    const std::string& accessibilityLabel() const { return accessibilityLabel_; }
    void setAccessibilityLabel(const std::string& label);

private:
    std::string accessibilityLabel_;
};

}  // namespace orvane::platform
