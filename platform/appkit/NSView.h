#pragma once

#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CALayer;
class NSGestureRecognizer;
class NSWindow;

enum class NSWindowOrderingMode { Below = -1, Out = 0, Above = 1 };
enum class NSViewLayerContentsRedrawPolicy { Never = 0, OnSetNeedsDisplay = 1 };

// A surface in a window: a frame in its superview, ordered subviews, a layer, and, where the kind
// paints (drawRect), a backing store that persists between frames. Origin at the top left, y down,
// in points. Siblings are drawn by z position of their layers, then in order.
//
// Views are made, changed and destroyed on the main thread only. A superview owns its subviews.
class ORVANE_EXPORT NSView : public std::enable_shared_from_this<NSView> {
public:
    NSView();
    virtual ~NSView();
    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    // ---- the view tree ----
    // A view that has a superview leaves it first. A view cannot go into itself or its own subtree.
    void addSubview(const std::shared_ptr<NSView>& view);
    // Directly above or below `relativeTo`; on top or at the bottom when that is no subview.
    void addSubview(const std::shared_ptr<NSView>& view, NSWindowOrderingMode place,
                    const NSView* relativeTo);
    void removeFromSuperviewWithoutNeedingDisplay();
    NSView* superview() const { return superview_; }
    const std::vector<std::shared_ptr<NSView>>& subviews() const { return subviews_; }
    NSWindow* window() const { return window_; }
    // Also true of the view itself.
    bool isDescendantOf(const NSView& view) const;

    // ---- geometry ----
    void setFrame(const CGRect& frame);
    CGRect frame() const { return frame_; }
    CGRect bounds() const { return {{0, 0}, frame_.size}; }
    void setHidden(bool hidden);
    bool isHidden() const { return hidden_; }

    // ---- drawing ----
    void setWantsLayer(bool wantsLayer);
    CALayer* layer() const { return layer_.get(); }
    void setLayerContentsRedrawPolicy(NSViewLayerContentsRedrawPolicy policy);
    // Damages an area, in the view's coordinates; it is painted at the next display pass.
    void setNeedsDisplayInRect(const CGRect& rect);
    // Paints into NSGraphicsContext's current canvas, whose user space is the view's. `dirty` is
    // cleared before and clipped to. Called once for each merged rectangle of the damage.
    virtual void drawRect(const CGRect& dirty);
    // Whether this kind has a drawRect, and so a backing store.
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
    // coordinates; null for none.
    virtual NSView* hitTest(CGPoint point);
    CGPoint convertPointFromWindow(CGPoint point) const;

private:
    friend class NSWindow;

    NSView* superview_ = nullptr;
    NSWindow* window_ = nullptr;
    std::vector<std::shared_ptr<NSView>> subviews_;
    CGRect frame_;
    bool hidden_ = false;
    std::shared_ptr<CALayer> layer_;
    std::vector<std::shared_ptr<NSGestureRecognizer>> recognizers_;
};

}  // namespace orvane::platform
