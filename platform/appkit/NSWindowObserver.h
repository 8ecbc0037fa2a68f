#pragma once

#include <span>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

class NSView;

// Follows the display passes of a window; see NSWindow::setObserver. What it changes about views
// belongs to the next pass. Main thread only.
class ORVANE_EXPORT NSWindowObserver {
public:
    virtual ~NSWindowObserver() = default;

    // A pass begins.
    virtual void willDisplay() = 0;
    // The place, the opacity or another property of a view is shown differently by this pass.
    virtual void didChangeView(NSView& view) = 0;
    // The view has painted these rectangles of its backing store, in the view's pixels.
    virtual void didPaintView(NSView& view, std::span<const NSBackingRect> rects) = 0;
    // The pass is over.
    virtual void didDisplay() = 0;
};

}  // namespace orvane::platform
