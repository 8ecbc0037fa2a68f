#pragma once

#include <memory>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSBackingPolicy;
class NSView;
struct CGAffineTransform;
struct NSEvent;

// What of a view changed: a bit set.
enum NSViewChange : unsigned {
    // Frame, or the layer's position, anchor point or transform, as it is shown: also at each pass
    // while an animation of it runs.
    kNSViewGeometryChanged = 1U << 0,
    kNSViewHiddenChanged = 1U << 1,
    kNSViewOpacityChanged = 1U << 2,     // of the layer, as it is shown; as above
    kNSViewBackgroundChanged = 1U << 3,  // of the layer
    kNSViewStateChanged = 1U << 4,       // a control's state
};

// What shows a tree of views. Off-screen it composes them into an image; on a desktop it realises
// them with the desktop's widgets. Main thread only.
//
// The protocol of a kind of window, in the order in which things happen:
//
//  1. Views change. didAddView and willRemoveView are called at once; all else is collected, and
//     scheduleDisplay is called when the first change comes in.
//  2. When it suits (the frame clock, the loop being idle), the window calls displayIfNeeded: one
//     display pass, at the media time of its beginning. In it, in this order,
//       a. animations that are over are dropped, and completions run (application code: anything
//          may change here, and belongs to this pass);
//       b. didReorderSubviews for each superview whose drawing order changed;
//       c. didChangeView once for each view that changed or is being animated, with all its
//       changes; d. views that can be seen and are damaged paint, didPaintView for each; e.
//       present.
//     A change that comes in during b to e waits for the next pass.
//  3. While animations run, scheduleDisplay is called again at the end of each pass; otherwise the
//     window is left in peace until something changes.
//
// What is to be shown of a view, at any point of a pass: frame().size, isHidden(), z order by
// superview->subviewsInDrawingOrder(), layer()->presentation(displayTime()) for place, transform
// and opacity (of the view with its subviews, as one group), layer()->backgroundColor(), and the
// pixels of backingStore() from tile to tile.
class ORVANE_EXPORT NSWindow {
public:
    NSWindow();
    // Kinds must call setContentView(nullptr) in their own destructor if they want to hear of the
    // views leaving.
    virtual ~NSWindow();
    NSWindow(const NSWindow&) = delete;
    NSWindow& operator=(const NSWindow&) = delete;

    NSView* contentView() const;
    // The root of the tree; null takes it away. Its frame stays as it is.
    void setContentView(const std::shared_ptr<NSView>& view);
    // Pixels a point; above zero.
    virtual double backingScaleFactor() const = 0;
    // What the window shows of its content, in points.
    virtual CGSize contentSize() const = 0;
    // Delivers a pointer event to the recognizers it belongs to. The recognizers of the view under
    // a button press keep the gesture until the button is up, wherever the pointer goes.
    void sendEvent(const NSEvent& event);
    // One display pass, if anything has changed or is being animated. Not while one is under way.
    void displayIfNeeded();
    // Whether a display pass would do anything.
    bool needsDisplay() const;
    // Whether an animation runs that changes what is shown from frame to frame.
    bool isAnimating() const;

protected:
    // Asks for a display pass at the next opportunity. Called once, until displayIfNeeded begins.
    virtual void scheduleDisplay() = 0;
    // The view has come into the tree. Called for the whole subtree, superviews first, subviews in
    // order; superview and window are set. Its properties are to be read here: what it was before
    // is not reported as changes.
    virtual void didAddView(NSView& view);
    // The view is about to leave the tree; superview and window are still set. Called for the whole
    // subtree, subviews first. The realization goes after this.
    virtual void willRemoveView(NSView& view);
    // superview.subviewsInDrawingOrder() is no longer what it was at the last pass: subviews came,
    // left, or changed places.
    virtual void didReorderSubviews(NSView& superview);
    // `changes` are NSViewChange bits.
    virtual void didChangeView(NSView& view, unsigned changes);
    // The view has painted these rectangles of its backing store (the view's pixels), or its stored
    // area has changed (view.backingStore()->area(); null when it has been dropped).
    virtual void didPaintView(NSView& view, std::span<const NSBackingRect> rects);
    // The pass is over: show the picture.
    virtual void present();
    // True for a view that this window shows by means of its own (a desktop's widget): it gets no
    // backing store and is never asked to paint. Must not change for a view while it is in the
    // window.
    virtual bool showsNatively(const NSView& view) const;

    // The kind's scale factor or content size has changed: stores follow, and repaint with a new
    // scale.
    void backingPropertiesDidChange();
    // The media time that the pass under way shows, or the last one.
    double displayTime() const;

private:
    friend class NSView;
    struct State;

    // By views.
    void viewsDidEnter(NSView& root);
    // Moving within the window, they keep their stores and animations.
    void viewsWillLeave(NSView& root, bool stayInWindow);
    void viewDidChange(NSView& view, unsigned changes);
    void viewAnimationsDidChange(NSView& view);
    void viewNeedsDisplay(NSView& view);
    void subviewOrderDidChange(NSView& superview);

    void setNeedsPass();
    void reportChanges();
    // Fits what is stored of a view and of its subviews to what can be seen of them.
    void updateStoredAreas(NSView& view, const CGAffineTransform& superviewToWindow,
                           const NSBackingPolicy& policy);
    void updateStoredArea(NSView& view, const CGAffineTransform& toWindow,
                          const NSBackingPolicy& policy);
    // An empty area drops the store.
    void storeArea(NSView& view, const NSBackingRect& area);
    void paintDamage();

    std::unique_ptr<State> state_;
};

}  // namespace orvane::platform
