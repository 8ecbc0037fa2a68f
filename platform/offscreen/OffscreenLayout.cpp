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

OffscreenPlace::Box boxOf(NSView& view, const NSBackingRect& rect) {
    return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
            static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom), &view};
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
    linkFade(view, nullptr);
    if (place.fadesInto != nullptr) {
        linkFade(*place.fadesInto, nullptr);
    }
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

bool OffscreenLayout::place(NSView& view, const CGAffineTransform& superview, bool isShown,
                            bool isMoved) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    const CALayerPresentation shown = view.layer()->presentation(time_);
    const CGAffineTransform toImage = view.layer()->affineTransform(shown).concat(superview);
    isShown = isShown && !view.isHidden() && shown.opacity > 0 && isPlaceable(toImage);

    isMoved = isMoved || toImage != place.toImage || isShown != place.isShown ||
              shown.opacity != place.opacity;
    isMoved = linkFade(view, view.siblingWithLayer(shown.fadesFrom)) || isMoved;
    place.toImage = toImage;
    place.isShown = isShown;
    place.opacity = shown.opacity;
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

bool OffscreenLayout::linkFade(NSView& view, NSView* from) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    if (place.fadesFrom == from) {
        return false;
    }
    if (place.fadesFrom != nullptr) {
        OffscreenPlace::of(*place.fadesFrom).fadesInto = nullptr;
    }
    place.fadesFrom = from;
    if (from != nullptr) {
        NSView*& into = OffscreenPlace::of(*from).fadesInto;
        if (into != nullptr) {
            OffscreenPlace::of(*into).fadesFrom = nullptr;
        }
        into = &view;
    }
    return true;
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
    bool hasFades = false;
    for (NSView* const subview : view.subviewsInDrawingOrder()) {
        placeMarked(*subview, here.toImage, here.isShown, isMoved);
        const OffscreenPlace& place = OffscreenPlace::of(*subview);
        hasFades = hasFades || place.fadesFrom != nullptr;
        if (!place.all.isEmpty()) {
            here.all = here.all.united(place.all);
            here.boxes.push_back(boxOf(*subview, place.all));
        }
    }
    if (hasFades) {
        joinFadingBoxes(here);
    }
}

void OffscreenLayout::joinFadingBoxes(OffscreenPlace& place) {
    std::erase_if(place.boxes, [](OffscreenPlace::Box& box) {
        const OffscreenPlace& own = OffscreenPlace::of(*box.view);
        for (const NSView* above = own.fadesInto; above != nullptr;) {
            const OffscreenPlace& next = OffscreenPlace::of(*above);
            if (!next.all.isEmpty()) {
                return true;  // drawn together with that view
            }
            above = next.fadesInto;
        }
        NSBackingRect all = own.all;
        for (const NSView* below = own.fadesFrom; below != nullptr;) {
            const OffscreenPlace& next = OffscreenPlace::of(*below);
            all = all.united(next.all);
            below = next.fadesFrom;
        }
        box = boxOf(*box.view, all);
        return false;
    });
}

}  // namespace orvane::platform
