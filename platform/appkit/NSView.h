#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSViewClip.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

class NSBackingStore;
class NSGestureRecognizer;
class NSWindow;
struct NSDrop;
struct NSEvent;

// Where addSubview puts a view. Out counts as Above.
enum class NSWindowOrderingMode { Below = -1, Out = 0, Above = 1 };
// When the contents of a view are painted; see setLayerContentsRedrawPolicy.
enum class NSViewLayerContentsRedrawPolicy { Never = 0, OnSetNeedsDisplay = 1 };

// The lists in which a window keeps its views: with changes that were not reported yet, superviews
// whose drawing order changed, views with damage, views whose layers have animations, and views
// that asked for frames.
enum class NSViewListKind { Changed, Reordered, Damaged, Animated, Stepped };
constexpr std::size_t kNSViewListKinds = 5;

// What a window keeps with each view that it shows, for example a widget. Owned by the view and
// destroyed when the view leaves the window.
class ORVANE_EXPORT NSViewRealization {
public:
    virtual ~NSViewRealization() = default;
};

// A surface in a window: a frame in its superview, ordered subviews, a layer, and, if its class
// paints (drawRect), a backing store that persists between frames. The origin is at the top left,
// y points down, and lengths are in points. Siblings are drawn by the z positions of their layers,
// then in order. Subviews are not clipped to their superview unless setClipsToBounds or setClips
// says so; what is clipped away gets no pointer either.
//
// Views are created, changed and destroyed on the main thread only. A superview owns its subviews.
// A setter never paints or composes: it notifies the window, which does what is needed at its next
// display pass. A view keeps its pixels when it is moved, rotated, faded, hidden or reordered.
class ORVANE_EXPORT NSView : public std::enable_shared_from_this<NSView>, public CALayerDelegate {
public:
    NSView();
    ~NSView() override;
    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    // ---- the view tree ----
    // Adds a view on top of the other subviews, after removing it from its superview. Does nothing
    // if this view is the added view or one of its descendants.
    void addSubview(const std::shared_ptr<NSView>& view);
    // Adds a view directly above or below `relativeTo`; at the top or the bottom if `relativeTo` is
    // not a subview of this view.
    void addSubview(const std::shared_ptr<NSView>& view, NSWindowOrderingMode place,
                    const NSView* relativeTo);
    // Removes the view from its superview, or from its window if it is the content view. When a
    // subtree leaves its window, its animations are removed in the window's next display pass,
    // which completes them for their transactions. A view that is back by then keeps them, and so
    // does one that addSubview moves within one window.
    void removeFromSuperviewWithoutNeedingDisplay();
    // Null for the content view of a window and for a view in no tree.
    NSView* superview() const { return superview_; }
    // In order, the last one on top among equal z positions.
    const std::vector<std::shared_ptr<NSView>>& subviews() const { return subviews_; }
    // Sorted by z position, then by order; the first is drawn first.
    const std::vector<NSView*>& subviewsInDrawingOrder() const;
    // The window whose tree the view is in, or null.
    NSWindow* window() const { return window_; }
    // Also true for the view itself.
    bool isDescendantOf(const NSView& view) const;

    // ---- geometry ----
    // In the superview's coordinates. Sets the layer's size, and places the layer's anchor point at
    // the corresponding point of the frame. A subclass that lays out its subviews overrides it.
    virtual void setFrame(const CGRect& frame);
    CGRect frame() const { return frame_; }
    // The frame in the view's own coordinates.
    CGRect bounds() const { return {{0, 0}, frame_.size}; }
    // The view's own flag. A hidden view hides its subviews.
    void setHidden(bool hidden);
    bool isHidden() const { return hidden_; }
    // Whether a flag of the view or of one of its superviews hides it.
    bool isHiddenOrHasHiddenAncestor() const;

    // ---- clipping ----
    // Whether the bounds cut off the subviews. False at first.
    void setClipsToBounds(bool clips) { layer_->setMasksToBounds(clips); }
    bool clipsToBounds() const { return layer_->masksToBounds(); }
    // Cuts off what the view and its subviews show outside any of these rectangles. They stay in
    // place in the superview when the view moves or its layer animates. None at first.
    void setClips(std::vector<NSViewClip> clips);
    const std::vector<NSViewClip>& clips() const { return clips_; }

    // ---- drawing ----
    // Does nothing: every view has a layer from the start.
    void setWantsLayer(bool) {}
    // Never null; borrowed from the view.
    CALayer* layer() const { return layer_.get(); }
    // With Never, damage is ignored: the view is painted only when it is first shown.
    void setLayerContentsRedrawPolicy(NSViewLayerContentsRedrawPolicy policy) { policy_ = policy; }
    // Damages an area, in the view's coordinates; it is painted at the next display pass. The area
    // is rounded outward to whole device pixels and expanded by one pixel. A rectangle that is not
    // finite damages the whole view. A negative extent means the area that it spans.
    void setNeedsDisplayInRect(const CGRect& rect);
    // Called by the display pass, once for each merged rectangle of the damage. Paints on
    // NSGraphicsContext's current canvas, in the view's coordinates. `dirty` has been cleared and
    // is the clip.
    virtual void drawRect(const CGRect& dirty);
    // Whether the class implements drawRect and so needs a backing store. Must be constant.
    virtual bool paints() const { return false; }
    // Part of the interface of views; nothing on this platform reads them, y always points down:
    virtual bool isFlipped() const { return false; }
    virtual bool isOpaque() const { return false; }
    // Called after the view entered a window, left it (window() is null), or changed windows.
    virtual void viewDidMoveToWindow() {}

    // ---- input ----
    // Does nothing if the recognizer belongs to a view already.
    void addGestureRecognizer(const std::shared_ptr<NSGestureRecognizer>& recognizer);
    // In order of adding.
    const std::vector<std::shared_ptr<NSGestureRecognizer>>& gestureRecognizers() const {
        return recognizers_;
    }
    // Returns the frontmost visible view of this subtree that contains a point in the superview's
    // coordinates; null for none. Uses the model values of the layers, including their transforms.
    virtual NSView* hitTest(CGPoint point);
    // A key was pressed, or repeats. Returns whether the view has handled the event; if not, its
    // superview is called. The first responder is called first, or the content view if there is no
    // first responder.
    virtual bool keyDown(const NSEvent& event);
    // A key was released. Otherwise like keyDown.
    virtual bool keyUp(const NSEvent& event);
    // A wheel was turned, or fingers moved on a touchpad. Returns whether the view has handled the
    // event; if not, its superview is called. The view under the pointer is called first.
    virtual bool scrollWheel(const NSEvent& event);
    // The pointer moved, left the view, or pressed or released a button. The view under the
    // pointer is called first; if it returns false, its superview is called. The view that handles
    // a press gets all pointer events until the release; gesture recognizers do not see a press of
    // the left button that a view has handled. While recognizers have a gesture, only its release
    // is a pointer event.
    virtual bool pointerEvent(const NSEvent& event);
    // A drag from another program is over the view, or was released there. Returns whether the view
    // takes it; if not, its superview is called. The view that would take it is called with
    // NSDropPhase::Left when the drag is elsewhere, and the result does not matter.
    virtual bool performDrop(const NSDrop& drop);
    // Whether the view can have the keyboard; see NSWindow::makeFirstResponder. A press of the
    // pointer gives the keyboard to the innermost view under it that accepts it.
    virtual bool acceptsFirstResponder() const { return false; }
    // Whether Tab gives the view the keyboard, if it accepts it; see NSWindow::selectKeyView.
    virtual bool canBecomeKeyView() const { return false; }
    // Tab visits views with a lower order first, and those of equal order as they are in the tree,
    // superviews first. 0 at first.
    void setKeyViewOrder(int order) { keyViewOrder_ = order; }
    // The order that setKeyViewOrder set.
    int keyViewOrder() const { return keyViewOrder_; }
    // Called after Tab gave the view the keyboard, for example to select a text.
    virtual void didBecomeKeyView() {}
    // Called after the view got the keyboard.
    virtual void didBecomeFirstResponder() {}
    // Called after the view lost the keyboard to another view, or to none. A view that leaves its
    // window loses the keyboard as well, and only viewDidMoveToWindow is called.
    virtual void didResignFirstResponder() {}
    // Called after a view below this one got the keyboard or lost it to another view.
    virtual void firstResponderBelowDidChange() {}

    // ---- time ----
    // Called at the beginning of each display pass while the view has asked for frames, with the
    // time that the pass shows, in seconds of media time. What it changes belongs to that pass.
    virtual void step(double time);
    // Asks for step to be called at each display pass, and for display passes to go on, until it is
    // set to false. A view that is in no window keeps asking, and is called when it is in one.
    void setNeedsFrames(bool needsFrames);
    bool needsFrames() const { return needsFrames_; }

    // Converts a point from the window's content to this view's coordinates, using the model values
    // of the layers. Returns the point unchanged if the mapping has no inverse.
    CGPoint convertPointFromWindow(CGPoint point) const;
    // Maps this view's coordinates to its window's content, using the model values of the layers.
    CGAffineTransform transformToWindow() const;

    // ---- for the window that shows the view ----
    // Returns the sibling that owns a layer, for example CALayerPresentation::fadesFrom; null for
    // none. Takes constant time. `layer` may be null.
    NSView* siblingWithLayer(const CALayer* layer) const;
    // Null while no part of the view is visible, and for a class that does not paint.
    const NSBackingStore* backingStore() const { return store_.get(); }
    // What the window keeps with the view; null if it keeps nothing.
    NSViewRealization* realization() const { return realization_.get(); }
    void setRealization(std::unique_ptr<NSViewRealization> realization);

protected:
    // Called by controls when their state has changed. Notifies the window (kNSViewStateChanged).
    void stateDidChange();

private:
    friend class NSDisplayPass;
    friend class NSWindow;
    friend class NSViewList;

    void layerDidChange(CALayer& layer, unsigned changes) override;
    void insertSubview(const std::shared_ptr<NSView>& view, std::size_t at);
    // Returns the index in subviews_; subviews_.size() if the view is not a subview.
    std::size_t indexOf(const NSView* view) const;
    void leaveSuperview();
    // Removes a view that has no superview from the window whose content view it is, if any.
    void leaveContentView();
    // Calls viewDidMoveToWindow for the subtree, superviews first.
    void notifyMovedToWindow();
    void subviewOrderChanged();

    static constexpr std::size_t kNotListed = static_cast<std::size_t>(-1);

    NSView* superview_ = nullptr;
    NSWindow* window_ = nullptr;
    std::vector<std::shared_ptr<NSView>> subviews_;
    mutable std::vector<NSView*> drawingOrder_;
    mutable bool drawingOrderValid_ = true;
    bool hidden_ = false;
    bool needsFrames_ = false;
    int keyViewOrder_ = 0;
    NSViewLayerContentsRedrawPolicy policy_ = NSViewLayerContentsRedrawPolicy::OnSetNeedsDisplay;
    CGRect frame_;
    std::vector<NSViewClip> clips_;
    std::shared_ptr<CALayer> layer_;
    // Shared, so that painting can continue when drawRect removes its own view from the window.
    std::shared_ptr<NSBackingStore> store_;
    std::unique_ptr<NSViewRealization> realization_;
    std::vector<std::shared_ptr<NSGestureRecognizer>> recognizers_;

    // Written by the window: the changes that were not reported yet (NSViewChange), and the index
    // in each of the window's lists, by NSViewListKind.
    unsigned changes_ = 0;
    std::array<std::size_t, kNSViewListKinds> indexInList_;
};

}  // namespace orvane::platform
