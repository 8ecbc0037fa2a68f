#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// The kinds of controls that a desktop window can show with a widget.
enum class NSControlKind { TextField };

// A native control: a view that holds the control's state and its kind. A desktop window shows it
// with a widget of the desktop and keeps the two in sync: didChangeView(kNSViewStateChanged)
// reports changes of the state, and the window stores the user's input with the same setters.
// Off-screen the control paints a plain approximation of itself.
class ORVANE_EXPORT NSControl : public NSView {
public:
    // Must be constant.
    virtual NSControlKind controlKind() const = 0;
    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }
};

}  // namespace orvane::platform
