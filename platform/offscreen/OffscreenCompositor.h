#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSDamageRegion.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::platform {

class NSBackingStore;

// Puts the views of an off-screen window together into its image, where something changed.
//
// With each view it keeps where the view stands in the image. What a change touches is marked as it
// comes in; at the end of the pass the marked subtrees are placed anew, their places before and
// after are damaged, and the damaged rectangles are composed from the backing stores.
class OffscreenCompositor {
public:
    OffscreenCompositor();
    ~OffscreenCompositor();
    OffscreenCompositor(const OffscreenCompositor&) = delete;
    OffscreenCompositor& operator=(const OffscreenCompositor&) = delete;

    // A new image, all of it damaged. `scale` is pixels a point.
    void setImage(int width, int height, double scale);
    cairo_surface_t* image() const { return image_.get(); }

    void add(NSView& view);
    void remove(NSView& view);
    // Its order of drawing among its siblings is another.
    void reorder(NSView& superview);
    // It moved, hid, faded, or all of these.
    void change(NSView& view);
    // Its colour behind the contents.
    void recolor(NSView& view);
    void painted(NSView& view, std::span<const NSBackingRect> rects);

    // Brings the image up to the views as they are at `time`. What was composed; valid until the
    // next call.
    std::span<const NSBackingRect> compose(NSView* root, double time);

private:
    struct Place;
    struct Destroy {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
        void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    };
    using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

    static Place& placeOf(const NSView& view);
    void mark(NSView& view);
    // Places the marked views of the subtree and all that moves with them. `isMoved`: the superview
    // itself stands, shows or blends otherwise than before.
    void placeMarked(NSView& view, const CGAffineTransform& superview, bool isShown, bool isMoved);
    bool place(const NSView& view, const CGAffineTransform& superview, bool isShown);
    // Where a box of the view's, in points, falls in the image: whole pixels around it.
    NSBackingRect boxInImage(const Place& place, const CGRect& box) const;
    void damagePainted();

    void composeRect(NSView& root, const NSBackingRect& rect);
    void composeView(NSView& view, const NSBackingRect& rect);
    void composeSubviews(NSView& view, const NSBackingRect& rect);
    void composeFade(NSView& outgoing, NSView& incoming, const NSBackingRect& rect);
    void drawBackground(const NSView& view, const Place& place, double alpha);
    void drawContents(const NSView& view, Place& place, double alpha);
    // What is drawn between the two is one picture, to be painted with cairo_paint and its kin.
    void beginGroup(const NSBackingRect& rect);
    void endGroup();

    Surface image_;
    std::unique_ptr<cairo_t, Destroy> cairo_;
    bool isNew_ = true;  // every view is to be placed anew
    double scale_ = 1;
    double time_ = 0;
    NSBackingRect bounds_;
    NSDamageRegion damage_;
    std::vector<NSBackingRect> composed_;
    // What views painted since the last compose, in their own pixels.
    struct Painted {
        NSView* view;
        NSBackingRect rect;
    };
    std::vector<Painted> painted_;
    int fading_ = 0;  // views that are in a cross-fade
};

}  // namespace orvane::platform
