#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

class NSBackingStore;
class NSGestureRecognizer;
class NSWindow;

enum class NSWindowOrderingMode { Below = -1, Out = 0, Above = 1 };
enum class NSViewLayerContentsRedrawPolicy { Never = 0, OnSetNeedsDisplay = 1 };

// The lists in which a window keeps its views: with changes that were not reported yet, superviews
// whose drawing order changed, views with damage, and views whose layers have animations.
enum class NSViewListKind { Changed, Reordered, Damaged, Animated };
constexpr std::size_t kNSViewListKinds = 4;

// What a window keeps with each view that it shows (a widget, a place in its image). The view owns
// it; it goes when the view leaves the window.
class ORVANE_EXPORT NSViewRealization {
public:
    virtual ~NSViewRealization() = default;
};

// A surface in a window: a frame in its superview, ordered subviews, a layer, and, where the kind
// paints (drawRect), a backing store that persists between frames. Origin at the top left, y down,
// in points. Siblings are drawn by z position of their layers, then in order. Subviews are not cut
// to their superview.
//
// Views are made, changed and destroyed on the main thread only. A superview owns its subviews.
// Nothing is painted or composed by a setter: the window hears of the change and does what is
// needed at its next display pass. A view that moves, turns, fades, hides or is restacked keeps its
// pixels.
class ORVANE_EXPORT NSView : public std::enable_shared_from_this<NSView>, private CALayerDelegate {
public:
    NSView();
    ~NSView() override;
    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    // ---- the view tree ----
    // On top. A view that has a superview leaves it first. A view cannot go into itself or its own
    // subtree: nothing happens then.
    void addSubview(const std::shared_ptr<NSView>& view);
    // Directly above or below `relativeTo`; on top or at the bottom when that is no subview.
    void addSubview(const std::shared_ptr<NSView>& view, NSWindowOrderingMode place,
                    const NSView* relativeTo);
    // Animations of a subtree that leaves its window are removed, and so are over for their
    // transactions; a view that goes elsewhere in its window by addSubview keeps them.
    // Of a window's content view the window is left without content.
    void removeFromSuperviewWithoutNeedingDisplay();
    NSView* superview() const { return superview_; }
    const std::vector<std::shared_ptr<NSView>>& subviews() const { return subviews_; }
    // Sorted by z position, then order: the first is drawn first.
    const std::vector<NSView*>& subviewsInDrawingOrder() const;
    NSWindow* window() const { return window_; }
    // Also true of the view itself.
    bool isDescendantOf(const NSView& view) const;

    // ---- geometry ----
    // Sets the layer's size, and its position so that the anchor point keeps its share of the
    // frame.
    void setFrame(const CGRect& frame);
    CGRect frame() const { return frame_; }
    CGRect bounds() const { return {{0, 0}, frame_.size}; }
    void setHidden(bool hidden);
    bool isHidden() const { return hidden_; }
    bool isHiddenOrHasHiddenAncestor() const;

    // ---- drawing ----
    // Every view has its layer from the start; asking for one changes nothing.
    void setWantsLayer(bool) {}
    CALayer* layer() const { return layer_.get(); }
    // Never: damage is ignored; the view is painted when it first shows, and no more.
    void setLayerContentsRedrawPolicy(NSViewLayerContentsRedrawPolicy policy) { policy_ = policy; }
    // Damages an area, in the view's coordinates; it is painted at the next display pass. Rounded
    // outwards to whole device pixels and grown by one. Anything that is not finite damages the
    // whole view. Negative extents count as the area they span.
    void setNeedsDisplayInRect(const CGRect& rect);
    // Paints into NSGraphicsContext's current canvas, whose user space is the view's. `dirty` is
    // cleared before and clipped to. Called once for each merged rectangle of the damage.
    virtual void drawRect(const CGRect& dirty);
    // Whether this kind has a drawRect, and so a backing store. Must not change.
    virtual bool paints() const { return false; }
    virtual bool isFlipped() const { return false; }
    virtual bool isOpaque() const { return false; }
    // The view has entered a window, left it (window() is null), or changed windows.
    virtual void viewDidMoveToWindow() {}

    // ---- input ----
    void addGestureRecognizer(const std::shared_ptr<NSGestureRecognizer>& recognizer);
    const std::vector<std::shared_ptr<NSGestureRecognizer>>& gestureRecognizers() const {
        return recognizers_;
    }
    // The frontmost visible view of this subtree that holds the point, given in the superview's
    // coordinates; null for none. Layer transforms (model values) count.
    virtual NSView* hitTest(CGPoint point);
    // To this view's coordinates, through the model values of the layers. A mapping that cannot be
    // inverted gives the point as it is.
    CGPoint convertPointFromWindow(CGPoint point) const;
    // From this view's coordinates to its window's content, by the layers' model values.
    CGAffineTransform transformToWindow() const;

    // ---- for the window that shows the view ----
    // Null while nothing of the view can be seen, or for a kind that does not paint.
    const NSBackingStore* backingStore() const { return store_.get(); }
    NSViewRealization* realization() const { return realization_.get(); }
    void setRealization(std::unique_ptr<NSViewRealization> realization);

protected:
    // For controls: what they hold has changed. The window is told (kNSViewStateChanged).
    void stateDidChange();

private:
    friend class NSWindow;
    friend class NSViewList;

    void layerDidChange(CALayer& layer, unsigned changes) override;
    void insertSubview(const std::shared_ptr<NSView>& view, std::size_t at);
    // The place in subviews_; its end when it is none.
    std::size_t indexOf(const NSView* view) const;
    void leaveSuperview();
    // For a view without a superview: it is a window's content, or in none.
    void leaveContentView();
    // viewDidMoveToWindow for the subtree, superviews first.
    void tellMovedToWindow();
    void subviewOrderChanged();

    static constexpr std::size_t kNotListed = static_cast<std::size_t>(-1);

    NSView* superview_ = nullptr;
    NSWindow* window_ = nullptr;
    std::vector<std::shared_ptr<NSView>> subviews_;
    mutable std::vector<NSView*> drawingOrder_;
    mutable bool drawingOrderValid_ = true;
    bool hidden_ = false;
    NSViewLayerContentsRedrawPolicy policy_ = NSViewLayerContentsRedrawPolicy::OnSetNeedsDisplay;
    CGRect frame_;
    std::shared_ptr<CALayer> layer_;
    // Shared so that a drawRect that takes its own view out of the window paints on to its end.
    std::shared_ptr<NSBackingStore> store_;
    std::unique_ptr<NSViewRealization> realization_;
    std::vector<std::shared_ptr<NSGestureRecognizer>> recognizers_;

    // The window's bookkeeping: the changes that it has not seen, and the places in its lists.
    unsigned changes_ = 0;
    // By NSViewListKind; kNotListed where the view is not in the list.
    std::array<std::size_t, kNSViewListKinds> indexInList_;
};

}  // namespace orvane::platform
