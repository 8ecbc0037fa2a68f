#include "platform/offscreen/OffscreenPlace.h"

namespace orvane::platform {

namespace {

// A filtered view is drawn up to one pixel beyond its edge.
NSBackingRect transformedBox(const CGAffineTransform& toImage, const CGRect& box) {
    const NSBackingRect mapped = NSBackingRect::around(toImage.apply(box), 1);
    return {mapped.left - 1, mapped.top - 1, mapped.right + 1, mapped.bottom + 1};
}

}  // namespace

NSBackingRect OffscreenPlace::boxInImage(const CGRect& box, double scale) const {
    return isPixelAligned ? NSBackingRect::around(box, scale).movedBy(originX, originY)
                          : transformedBox(toImage, box);
}

NSBackingRect OffscreenPlace::pixelsInImage(const NSBackingRect& rect, double scale) const {
    return isPixelAligned ? rect.movedBy(originX, originY)
                          : transformedBox(toImage, rect.toPoints(scale));
}

bool OffscreenPlace::isPlain() const {
    return isPixelAligned && opacity == 1 && masks.empty() && subviewMasks.empty() &&
           fadesFrom == nullptr && fadesInto == nullptr;
}

CGAffineTransform OffscreenPlace::toDrawnPixels(double scale) const {
    return isPixelAligned ? CGAffineTransform{scale,
                                              0,
                                              0,
                                              scale,
                                              static_cast<double>(originX),
                                              static_cast<double>(originY)}
                          : toImage;
}

}  // namespace orvane::platform
