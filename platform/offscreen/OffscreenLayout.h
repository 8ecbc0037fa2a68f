#pragma once

#include <optional>

#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/offscreen/OffscreenPlace.h"
#include "platform/offscreen/OffscreenScroll.h"

namespace orvane::platform {

class NSView;
class OffscreenDamage;

// Computes where the views of an off-screen window are in its image.
//
// A change marks the views concerned. update() then places the marked views and everything that
// moves with them, and damages their old and new places.
class OffscreenLayout {
public:
    // The damage is borrowed and must outlive this object.
    explicit OffscreenLayout(OffscreenDamage& damage) : damage_(damage) {}

    // The image was replaced: every view will be placed again. `scale` is the number of pixels per
    // point.
    void setImage(const NSBackingRect& bounds, double scale);

    void add(NSView& view);
    // Called while the view still has its superview.
    void remove(NSView& view);
    // The view moved, or its visibility or opacity changed.
    void mark(NSView& view);
    // The view's background changed.
    void markRecolored(NSView& view);
    // The set or the order of the subviews changed.
    void markSubviews(NSView& view);

    // Places what is marked, as the views are shown at a media time.
    void update(NSView& root, double time);
    // The view that the last update() found to be scrolled; nothing if there was none. What moved
    // with it is not damaged, and what moved in another way is damaged where its pixels are after
    // the scroll: the caller moves the pixels, or damages the visible part.
    const std::optional<OffscreenScroll>& scroll() const { return scroll_; }

private:
    // `isMoved` is true if the superview was moved, or its visibility, opacity or clip changed.
    void placeMarked(NSView& view, const OffscreenPlace& superview, bool isMoved);
    // Places the view itself. Returns true if its subviews must be placed, too.
    bool place(NSView& view, const OffscreenPlace& superview, bool isMoved);
    // Damages what a view, which was at `before` and drawn plainly or not, has left, and where it
    // is; but not what a scroll moves.
    void damagePlaces(NSView& view, const OffscreenExtent& before, bool wasPlain,
                      bool isSuperviewMoved);
    // Takes over the view's clips. Returns whether that changes what is visible.
    bool clip(const NSView& view, const OffscreenPlace& superview);

    // Records which sibling the view replaces in a cross-fade; null for none. Returns whether that
    // is new.
    static bool linkFade(NSView& view, NSView* from);
    // Joins the boxes of views that fade over one another, where the topmost of them is.
    static void joinFadingBoxes(OffscreenPlace& place);

    OffscreenDamage& damage_;
    NSBackingRect bounds_;
    double scale_ = 1;
    double time_ = 0;
    bool isNew_ = true;  // every view must be placed
    std::optional<OffscreenScroll> scroll_;
    bool isInScroll_ = false;  // subviews of the scrolled view are being placed
};

}  // namespace orvane::platform
