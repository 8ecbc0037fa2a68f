#pragma once

#include "platform/appkit/NSBackingRect.h"
#include "platform/offscreen/OffscreenTarget.h"

namespace orvane::platform {

class NSBackingStore;
class NSView;
struct OffscreenPlace;

// Draws a tree of placed views (OffscreenPlace) on pixels, from the views' backing stores.
//
// What it draws of a view does not depend on the rectangle that is being composed, so an image that
// is composed in pieces equals one that is composed at once, bit for bit.
class OffscreenComposer {
public:
    // `scale` is the number of the views' pixels per point.
    // Views that are not in the picture are left out.
    OffscreenComposer(double scale, int picture) : scale_(scale), picture_(picture) {}

    // Replaces a part of the window's image by what the views show there; transparent pixels where
    // there is no view. `root` may be null.
    void compose(OffscreenTarget& image, NSView* root, const NSBackingRect& rect) const;

    // Whether the view's background alone covers a rectangle of the image completely.
    static bool hidesAllBelow(const NSView& view, const NSBackingRect& rect);

private:
    void drawView(OffscreenTarget& target, NSView& view, const NSBackingRect& rect) const;
    void drawSubviews(OffscreenTarget& target, const OffscreenPlace& place,
                      const NSBackingRect& rect) const;
    void drawUnmaskedSubviews(OffscreenTarget& target, const OffscreenPlace& place,
                              const NSBackingRect& rect) const;
    // Draws a view together with the views that it replaces in a cross-fade.
    void drawFade(OffscreenTarget& target, NSView& topmost, const NSBackingRect& rect) const;
    void drawContents(OffscreenTarget& target, const NSView& view, double alpha,
                      const NSBackingRect& rect) const;
    // Prepares the stored pixels for drawing under the view's transform.
    void prepareContents(OffscreenPlace& place) const;

    double scale_;
    int picture_;
};

}  // namespace orvane::platform
