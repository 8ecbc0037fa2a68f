#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::platform {

enum class NSControlKind { TextField };

// A native control: a view that holds the control's state and says what kind it is. A window on a
// desktop shows it by the desktop's own widget and keeps the two in step: it hears of the state by
// didChangeView(kNSViewStateChanged) and writes back what the user did with the same setters.
// Off-screen the control paints a plain likeness of itself.
class ORVANE_EXPORT NSControl : public NSView {
public:
    virtual NSControlKind controlKind() const = 0;
    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }
};

}  // namespace orvane::platform
