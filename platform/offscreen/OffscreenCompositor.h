#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSDamageRegion.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

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
    int width() const { return static_cast<int>(bounds_.width()); }
    int height() const { return static_cast<int>(bounds_.height()); }
    // Rows packed.
    const std::uint32_t* pixels() const { return image_.pixels.get(); }

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

    // Pixels that are drawn on: the picture, or a group that is laid on it as one.
    struct Target {
        NSBackingRect area;  // in the picture
        std::unique_ptr<std::uint32_t[]> pixels;
        PixmanImage image;

        static Target create(const NSBackingRect& area);
        Bitmap bitmap() const;
        // A part of the picture as a part of the bitmap.
        PixelRect toPixels(const NSBackingRect& rect) const;
    };

    static Place& placeOf(const NSView& view);
    // To be placed anew; its subviews with it where they have to.
    void mark(NSView& view);
    // Some of its subviews are marked, or another set or order of them is there.
    void markSubviews(NSView& view);
    // Places the marked views of the subtree and all that moves with them. `isMoved`: the superview
    // itself stands, shows or blends otherwise than before.
    void placeMarked(NSView& view, const CGAffineTransform& superview, bool isShown, bool isMoved);
    // The view itself. True when its subviews have to follow.
    bool place(const NSView& view, const CGAffineTransform& superview, bool isShown, bool isMoved);
    // Where a box of the view's, in points, falls in the image: whole pixels around it.
    NSBackingRect boxInImage(const Place& place, const CGRect& box) const;
    void damagePainted();

    void composeRect(NSView* root, const NSBackingRect& rect);
    // Its background alone covers the rectangle, whatever was there.
    static bool hidesAllBelow(const NSView& view, const NSBackingRect& rect);
    void composeView(Target& target, NSView& view, const NSBackingRect& rect);
    void composeSubviews(Target& target, const Place& place, const NSBackingRect& rect);
    // The same while views of the window are in a cross-fade.
    void composeFading(Target& target, const Place& place, const NSBackingRect& rect);
    void composeFade(Target& target, NSView& outgoing, NSView& incoming, const NSBackingRect& rect);
    static void drawBackground(Target& target, const NSView& view, double alpha,
                               const NSBackingRect& rect);
    void drawContents(Target& target, const NSView& view, double alpha, const NSBackingRect& rect);
    // Where the view only moved and shows in full: its pixels as they are.
    static void copyContents(Target& target, const NSBackingStore& store, const Place& place,
                             const NSBackingRect& rect);
    // Fits the contents to where the view stands.
    void layOut(Place& place) const;
    static void drawGroup(Target& target, const Target& group, pixman_op_t blend, double alpha);

    Target image_;
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
    std::vector<std::size_t> ends_;  // reorder's
    std::vector<std::size_t> before_;
    int fading_ = 0;  // views that are in a cross-fade
};

}  // namespace orvane::platform
