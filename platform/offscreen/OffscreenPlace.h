#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

// A clip that is not a rectangle of whole pixels.
struct OffscreenClip {
    CGRect rect;
    CGAffineTransform toImage;  // from the rectangle's coordinates to the image's pixels
    double cornerRadius = 0;    // in the rectangle's coordinates

    friend bool operator==(const OffscreenClip&, const OffscreenClip&) = default;
};

// Which pixels of the window's image a view draws on.
struct OffscreenExtent {
    bool isShown = false;  // neither the view nor an ancestor is hidden or fully transparent
    double opacity = 1;
    // Set when the view is only moved: its pixels are copied unchanged, to the nearest whole pixel.
    bool isPixelAligned = false;
    std::int64_t originX = 0;
    std::int64_t originY = 0;
    // Nothing of the view, and of its subviews, is outside these parts of the image.
    NSBackingRect visible;
    NSBackingRect visibleSubviews;
    NSBackingRect own;  // what the view itself draws; empty if it draws nothing
};

// What an off-screen window keeps with each of its views: where the view is in the window's image.
// OffscreenLayout writes it and OffscreenComposer reads it.
struct OffscreenPlace final : NSViewRealization, OffscreenExtent {
    // The place of a view that is in an off-screen window.
    static OffscreenPlace& of(const NSView& view) {
        return static_cast<OffscreenPlace&>(*view.realization());
    }

    // Map a rectangle of the view to the image: the whole pixels that it touches. The first takes
    // points, the second the view's pixels. `scale` is the number of pixels per point.
    NSBackingRect boxInImage(const CGRect& box, double scale) const;
    NSBackingRect pixelsInImage(const NSBackingRect& rect, double scale) const;
    // Maps the view's points to where they are drawn in the image: moved to the nearest whole
    // pixel if the view's pixels are.
    CGAffineTransform toDrawnPixels(double scale) const;

    // Whether the view is drawn as it is: neither filtered, nor cut by a mask, nor faded.
    bool isPlain() const;

    CGAffineTransform toImage;  // from the view's points to the image's pixels
    // The siblings that this view replaces, and that replaces it, in a cross-fade; see
    // CALayerPresentation. The links are always mutual, also when one of the views leaves.
    NSView* fadesFrom = nullptr;
    NSView* fadesInto = nullptr;
    // The clips that need more than the rectangles `visible` and `visibleSubviews`.
    std::vector<OffscreenClip> masks;
    std::vector<OffscreenClip> subviewMasks;

    NSBackingRect all;  // what the view and its subviews draw
    // Where the subviews and their subviews draw, in drawing order. A compact copy, because with
    // many views most of the work is to find the few that meet a damaged rectangle.
    struct Box {
        std::int32_t left, top, right, bottom;
        NSView* view;
    };
    std::vector<Box> boxes;

    // A view that the desktop shows with a widget: it separates the views behind it, which are in
    // one picture, from those in front of it, which are in the next.
    bool isNative = false;
    int firstPicture = 0;  // the picture that the view itself is in
    int lastPicture = 0;   // the picture that its last descendant is in

    std::size_t rank = 0;  // one-based index among the siblings in drawing order; 0 if unknown
    bool isMarked = false;
    bool isRecolored = false;
    bool hasMarkedBelow = false;

    // The pixels of the backing store, prepared for drawing under a transform or with an opacity.
    PixmanImage contents;
    const std::uint32_t* pixels = nullptr;
    NSBackingRect area;
    bool isPrepared = false;

    // The color that all pixels of a part of the backing store have, in the view's pixels; nothing
    // if they differ. Found when a view in front of this one was scrolled; see OffscreenScroll.
    bool isProbed = false;
    NSBackingRect probed;
    std::optional<std::uint32_t> probedColor;
};

}  // namespace orvane::platform
