#pragma once

#include <memory>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSAccessibility;
class NSView;
class NSWindowDelegate;
class NSWindowHost;
class NSWindowObserver;
enum class NSCursor;
struct CGAffineTransform;
struct NSDrop;
struct NSEvent;

// What changed about a view: a set of bits.
enum NSViewChange : unsigned {
    // The frame, the clips, or the position, anchor point or transform that the layer shows. Also
    // set at each pass while an animation of the layer runs.
    kNSViewGeometryChanged = 1U << 0,
    kNSViewHiddenChanged = 1U << 1,
    // The opacity that the layer shows. Also set at each pass while an animation runs.
    kNSViewOpacityChanged = 1U << 2,
    kNSViewBackgroundChanged = 1U << 3,
    kNSViewStateChanged = 1U << 4,  // a control's state
};

// Shows a tree of views. A subclass decides how: off-screen it composes them into an image; on a
// desktop it realizes each view with a widget. Main thread only.
//
// The protocol of a subclass, in the order in which things happen:
//
//  1. Views change. The window calls didAddView and willRemoveView synchronously. It collects all
//     other changes, and calls scheduleDisplay for the first of them.
//  2. At a suitable time, for example when the desktop asks for a frame, the subclass calls
//     displayIfNeeded: one display pass, at the media time at which it starts. The pass
//       a. drops animations that are over and runs completions, calls step of the views that asked
//          for frames, and takes the keyboard from a view that is hidden. This is application
//          code: it may change anything, and its changes belong to this pass;
//       b. calls didReorderSubviews for each superview whose drawing order changed;
//       c. calls didChangeView once for each view that changed or is animated;
//       d. lets the views that are visible and damaged paint, and calls didPaintView for each;
//       e. calls present.
//     A change during b to e belongs to the next pass.
//  3. While animations run, or a view asks for frames, the window calls scheduleDisplay again at
//     the end of each pass. Otherwise it calls nothing until something changes.
//
// At any point of a pass, the subclass reads what to show of a view from frame().size, isHidden(),
// clips(), clipsToBounds(), the superview's subviewsInDrawingOrder(), layer()->backgroundColor(),
// the pixels of backingStore(), and layer()->presentation(displayTime()) for the place, the
// transform and the opacity (of the view and its subviews as one group).
class ORVANE_EXPORT NSWindow {
public:
    NSWindow();
    // A subclass that overrides willRemoveView must call setContentView(nullptr) in its own
    // destructor; here it is too late for virtual calls.
    virtual ~NSWindow();
    NSWindow(const NSWindow&) = delete;
    NSWindow& operator=(const NSWindow&) = delete;

    // The root of the view tree, or null.
    NSView* contentView() const;
    // Sets the root of the view tree; null removes it. The view's frame is not changed.
    void setContentView(const std::shared_ptr<NSView>& view);
    // The number of pixels per point; greater than zero.
    virtual double backingScaleFactor() const = 0;
    // The size of the part of the content that is visible, in points.
    virtual CGSize contentSize() const = 0;
    // Delivers an event to views: NSView's functions say to which. The
    // left button also goes to the gesture recognizers of the view under the press and of its
    // superviews, wherever the pointer is. Returns whether a view handled the
    // event or Tab moved the keyboard; true for the left button.
    bool sendEvent(const NSEvent& event);
    // The view of this window that has the keyboard; null for none. A view that is hidden, or below
    // a hidden view, loses the keyboard in the next display pass.
    NSView* firstResponder() const;
    // Gives the keyboard to a view of this window, or to none. Returns false, and changes nothing,
    // if the view is not in this window or does not accept it.
    bool makeFirstResponder(NSView* view);
    // Gives the keyboard to the next or the previous visible view that Tab visits; see
    // NSView::setKeyViewOrder. After the last view comes the first one if `wraps` is true. Returns
    // false, and changes nothing, if there is none. sendEvent calls it for a Tab that no view
    // handles.
    bool selectKeyView(bool forward, bool wraps);
    // The shape of the pointer over the window; Default at first. Views that show something under
    // the pointer set it.
    NSCursor cursor() const;
    void setCursor(NSCursor cursor);
    // Delivers a drag from another program: to the view under it, and then to its superviews, until
    // one takes it (NSView::performDrop). Returns whether one does.
    bool sendDrop(const NSDrop& drop);

    // ---- the window around the content ----
    // What the program around the content can do for it; one that refuses everything if none was
    // set.
    NSWindowHost& host() const;
    // Borrowed; null for none.
    void setHost(NSWindowHost* host);
    // What the content learns about the window around it. Borrowed; null for none.
    void setDelegate(NSWindowDelegate* delegate);
    // The user wants to close the window: asks the delegate, and then has the host close it.
    // Returns whether it closes.
    bool performClose();
    // Whether the window fills the screen.
    bool isFullScreen() const;
    // Must be called by the host when that has changed.
    void fullScreenDidChange(bool isFullScreen);

    // Sets what tells the window what assistive technology finds in it; null for nothing. Borrowed.
    // A window without assistive technology ignores it.
    virtual void setAccessibility(NSAccessibility* content);
    // Must be called when another element has the keyboard. Other changes are read some time after
    // the window has shown something new, and not while it is unchanged.
    virtual void accessibilityDidChange();

    // Runs one display pass if anything changed or is animated. Does nothing during a pass.
    void displayIfNeeded();
    // The same with the time that the pass shows, in seconds of media time, for a window whose
    // display knows the time of its next frame.
    void displayIfNeeded(double time);
    // Whether a display pass would do anything.
    bool needsDisplay() const;
    // Whether an animation that can change each frame is running, or a view asks for frames.
    bool isAnimating() const;
    // Sets what follows the display passes; null for nothing. Borrowed. Call it outside a pass.
    void setObserver(NSWindowObserver* observer);

protected:
    // Must arrange that displayIfNeeded is called soon. It is not called again until
    // displayIfNeeded has started.
    virtual void scheduleDisplay() = 0;
    // The view was added to the tree. Called for each view of a subtree, superviews first, subviews
    // in order; superview() and window() are set. The subclass must read the view's properties
    // here: only later changes are reported.
    virtual void didAddView(NSView& view);
    // The view is about to leave the tree; superview() and window() are still set. Called for each
    // view of a subtree, subviews first. The realization is destroyed afterward.
    virtual void willRemoveView(NSView& view);
    // superview.subviewsInDrawingOrder() changed since the last pass.
    virtual void didReorderSubviews(NSView& superview);
    // `changes` is a set of NSViewChange bits.
    virtual void didChangeView(NSView& view, unsigned changes);
    // The view painted these rectangles of its backing store, in the view's pixels, or its stored
    // area changed: see backingStore()->area(); backingStore() is null if it was dropped.
    virtual void didPaintView(NSView& view, std::span<const NSBackingRect> rects);
    // The pass is complete: show the picture.
    virtual void present();
    // Returns true for a view that this window shows by its own means, for example a widget of the
    // desktop. Such a view has no backing store and never paints. Must be constant for a view while
    // it is in the window.
    virtual bool showsNatively(const NSView& view) const;
    // Such a view has moved, or another part of it is visible now. `distance` is how many points it
    // is away from the part of the window that its superviews do not clip: 0 if some of it is
    // visible, infinite if they clip everything. Not called for a hidden view.
    virtual void didExposeNativeView(NSView& view, double distance);
    // firstResponder() changed. A subclass that shows the view by its own means gives its widget
    // the keyboard.
    virtual void didChangeFirstResponder();
    // cursor() changed.
    virtual void didChangeCursor();

    // Delivers a key that the widget of the first responder has refused: to its superviews only if
    // the window shows it natively (but see NSControl::takesKeysOfWidget), otherwise like
    // sendEvent. Returns whether a view handled it.
    bool sendUnhandledKey(const NSEvent& event);

    // Must be called when backingScaleFactor() or contentSize() changed. Adapts the backing stores;
    // a new scale repaints them.
    void backingPropertiesDidChange();
    // The media time that the current pass shows; outside a pass, the time of the last one.
    double displayTime() const;

private:
    friend class NSView;
    friend class NSDisplayPass;
    friend class NSWindowInput;
    struct State;

    // Called by views.
    void viewsDidEnter(NSView& root);
    // Views that move within the window keep their stores and animations.
    void viewsWillLeave(NSView& root, bool stayInWindow);
    void viewDidChange(NSView& view, unsigned changes);
    void viewAnimationsDidChange(NSView& view);
    void viewNeedsDisplay(NSView& view);
    void viewNeedsFramesDidChange(NSView& view);
    void subviewOrderDidChange(NSView& superview);

    void setNeedsPass();

    // Shared with the functions that deliver input: a handler may destroy the window.
    std::shared_ptr<State> state_;
};

}  // namespace orvane::platform
