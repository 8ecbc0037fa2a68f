#pragma once

#include "platform/appkit/NSBackingPolicy.h"
#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

class NSExposure;
class NSView;
class NSWindow;
class NSWindowObserver;
struct NSWindowChanges;

// One display pass of a window; NSWindow describes the protocol. NSWindow::displayIfNeeded creates
// it and calls its functions in the order in which they are declared.
//
// Each function calls code that may change the view tree, so the views that it works on are kept
// alive, and those that have left the window are skipped.
class NSDisplayPass {
public:
    // Borrows everything; `observer` may be null. `time` is the media time that the pass shows.
    NSDisplayPass(NSWindow& window, NSWindowChanges& changes, NSWindowObserver* observer,
                  double time);

    // Calls NSView::step of the views that asked for frames.
    void stepViews();
    // Ends the animations of views that have left the window.
    void endDepartedAnimations();
    // Reports changes to the window, and adapts what is stored of the views to what can be seen of
    // them, which may damage them.
    void reportChanges();
    // Has the damaged views paint.
    void paintDamage();

private:
    void updateStoredAreas(NSView& view, const NSExposure& superview,
                           const NSBackingPolicy& policy);
    void updateStoredArea(NSView& view, const NSExposure& exposure, const NSBackingPolicy& policy);
    // An empty area drops the store.
    void storeArea(NSView& view, const NSBackingRect& area);

    NSWindow& window_;
    NSWindowChanges& changes_;
    NSWindowObserver* observer_;
    double time_;
};

}  // namespace orvane::platform
