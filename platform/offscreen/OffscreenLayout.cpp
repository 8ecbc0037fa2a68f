#include "platform/offscreen/OffscreenLayout.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenDamage.h"
#include "platform/offscreen/OffscreenPlace.h"

namespace orvane::platform {

namespace {

// The range of Pixman's 16.16 coordinates, less what Pixman itself adds to them.
constexpr double kLongestStep = 8192;

// Whether a view with this transform shows anything, and the inverse fits Pixman's coordinates.
bool isPlaceable(const CGAffineTransform& t) {
    const std::optional<CGAffineTransform> inverse = t.invert();
    return inverse && inverse->norm() < kLongestStep;
}

}  // namespace

void OffscreenLayout::setImage(const NSBackingRect& bounds, double scale) {
    bounds_ = bounds;
    scale_ = scale;
    isNew_ = true;
}

// ---- changes ----

void OffscreenLayout::add(NSView& view) {
    view.setRealization(std::make_unique<OffscreenPlace>());
    mark(view);
}

void OffscreenLayout::remove(NSView& view) {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    damage_.add(place.own);
    fading_ -= place.fadesFrom != nullptr ? 1 : 0;
    if (NSView* const superview = view.superview()) {
        OffscreenPlace::of(*superview).boxes.clear();
        markSubviews(*superview);
    }
}

void OffscreenLayout::mark(NSView& view) {
    OffscreenPlace::of(view).isMarked = true;
    if (NSView* const superview = view.superview()) {
        markSubviews(*superview);
    }
}

void OffscreenLayout::markRecolored(NSView& view) {
    OffscreenPlace::of(view).isRecolored = true;
    mark(view);
}

void OffscreenLayout::markSubviews(NSView& view) {
    for (NSView* above = &view; above != nullptr; above = above->superview()) {
        OffscreenPlace& place = OffscreenPlace::of(*above);
        if (place.hasMarkedBelow) {
            return;
        }
        place.hasMarkedBelow = true;
    }
}

// ---- placing ----

void OffscreenLayout::update(NSView& root, double time) {
    time_ = time;
    placeMarked(root, {scale_, 0, 0, scale_, 0, 0}, true, isNew_);
    isNew_ = false;
}

bool OffscreenLayout::place(const NSView& view, const CGAffineTransform& superview, bool isShown,
                            bool isMoved) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    const CALayerPresentation shown = view.layer()->presentation(time_);
    const CGAffineTransform toImage = view.layer()->affineTransform(shown).concat(superview);
    isShown = isShown && !view.isHidden() && shown.opacity > 0 && isPlaceable(toImage);

    isMoved = isMoved || toImage != place.toImage || isShown != place.isShown ||
              shown.opacity != place.opacity || shown.fadesFrom != place.fadesFrom;
    fading_ += (shown.fadesFrom != nullptr ? 1 : 0) - (place.fadesFrom != nullptr ? 1 : 0);
    place.toImage = toImage;
    place.isShown = isShown;
    place.opacity = shown.opacity;
    place.fadesFrom = shown.fadesFrom;
    place.isPixelAligned =
        toImage.a == scale_ && toImage.d == scale_ && toImage.b == 0 && toImage.c == 0;
    place.originX = NSBackingRect::floorPixel(toImage.tx + 0.5);
    place.originY = NSBackingRect::floorPixel(toImage.ty + 0.5);

    const bool draws = view.paints() || view.layer()->backgroundColor().alpha > 0;
    const NSBackingRect own = isShown && draws
                                  ? place.boxInImage(view.bounds(), scale_).intersection(bounds_)
                                  : NSBackingRect{};
    if (isMoved || place.isRecolored || own != place.own) {
        damage_.add(place.own);
        damage_.add(own);
        place.isPrepared = false;
    }
    place.own = own;
    place.isRecolored = false;
    return isMoved;
}

void OffscreenLayout::placeMarked(NSView& view, const CGAffineTransform& superview, bool isShown,
                                  bool isMoved) {
    OffscreenPlace& here = OffscreenPlace::of(view);
    if (!isMoved && !here.isMarked && !here.hasMarkedBelow) {
        return;
    }
    if (isMoved || here.isMarked) {
        isMoved = place(view, superview, isShown, isMoved);
    }
    here.isMarked = false;
    here.hasMarkedBelow = false;
    here.all = here.own;
    here.boxes.clear();
    for (NSView* const subview : view.subviewsInDrawingOrder()) {
        placeMarked(*subview, here.toImage, here.isShown, isMoved);
        const NSBackingRect& box = OffscreenPlace::of(*subview).all;
        if (!box.isEmpty()) {
            here.all = here.all.united(box);
            here.boxes.push_back({static_cast<std::int32_t>(box.left),
                                  static_cast<std::int32_t>(box.top),
                                  static_cast<std::int32_t>(box.right),
                                  static_cast<std::int32_t>(box.bottom), subview});
        }
    }
}

}  // namespace orvane::platform
