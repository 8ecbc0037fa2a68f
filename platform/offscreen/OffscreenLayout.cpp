#include "platform/offscreen/OffscreenLayout.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

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

// Whether a transform maps rectangles to rectangles.
bool keepsRectangles(const CGAffineTransform& t) {
    return (t.b == 0 && t.c == 0) || (t.a == 0 && t.d == 0);
}

// Cuts off what is outside a clip, and adds a mask if that takes more than cutting whole pixels.
void cut(NSBackingRect& visible, std::vector<OffscreenClip>& masks, const CGRect& rect,
         const CGAffineTransform& toImage, double cornerRadius) {
    if (!isFinite(rect) || !toImage.isDrawable()) {
        visible = {};
        return;
    }
    constexpr double kTolerance = 1e-6;  // of pixels
    const CGRect box = toImage.apply(rect);
    const auto [left, top] = box.origin;
    const CGRect pixels{{std::round(left), std::round(top)},
                        {std::round(left + box.size.width) - std::round(left),
                         std::round(top + box.size.height) - std::round(top)}};
    const bool isWhole =
        keepsRectangles(toImage) &&
        std::max({std::abs(pixels.origin.x - left), std::abs(pixels.origin.y - top),
                  std::abs(pixels.size.width - box.size.width),
                  std::abs(pixels.size.height - box.size.height)}) < kTolerance;
    visible = visible.intersection(NSBackingRect::around(isWhole ? pixels : box, 1));
    if (!isWhole || cornerRadius > 0) {
        masks.push_back({rect, toImage, cornerRadius});
    }
}

OffscreenPlace::Box boxOf(NSView& view, const NSBackingRect& rect) {
    return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
            static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom), &view};
}

// Whether two parts of the image are the same as far as `rect` shows them.
bool agree(const NSBackingRect& a, const NSBackingRect& b, const NSBackingRect& rect) {
    const NSBackingRect inA = a.intersection(rect);
    const NSBackingRect inB = b.intersection(rect);
    return inA == inB || (inA.isEmpty() && inB.isEmpty());
}

// Returns how a plain view has scrolled; nothing if it did something else.
std::optional<OffscreenScroll> findScroll(NSView& view, const OffscreenExtent& before) {
    const OffscreenExtent& now = OffscreenPlace::of(view);
    const OffscreenScroll scroll{&view, now.visible, now.originX - before.originX,
                                 now.originY - before.originY};
    const bool isCovered =
        now.own == now.visible && before.own == now.visible && before.visible == now.visible;
    const bool isMoved = scroll.dx != 0 || scroll.dy != 0;
    return isCovered && isMoved && !scroll.moved(now.visible).isEmpty() ? std::optional(scroll)
                                                                        : std::nullopt;
}

// Whether a plain view moved with the scroll and looks the same where it was visible all the time.
bool isMovedBy(const OffscreenScroll& scroll, const OffscreenExtent& before,
               const OffscreenExtent& now) {
    const NSBackingRect kept = scroll.moved(scroll.visible);
    return before.isShown == now.isShown && before.originX + scroll.dx == now.originX &&
           before.originY + scroll.dy == now.originY &&
           agree(scroll.moved(before.visible), now.visible, kept) &&
           agree(scroll.moved(before.visibleSubviews), now.visibleSubviews, kept) &&
           agree(scroll.moved(before.own), now.own, kept);
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
    scroll_.reset();
    OffscreenPlace image;
    image.toImage = {scale_, 0, 0, scale_, 0, 0};
    image.isShown = true;
    image.isPixelAligned = true;
    image.visibleSubviews = bounds_;
    placeMarked(root, image, isNew_);
    isNew_ = false;
}

bool OffscreenLayout::place(NSView& view, const OffscreenPlace& superview, bool isMoved) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    const OffscreenExtent before = static_cast<const OffscreenExtent&>(place);
    const bool wasPlain = place.isPlain();
    const bool isSuperviewMoved = isMoved;
    const CALayerPresentation shown = view.layer()->presentation(time_);
    const CGAffineTransform toImage =
        view.layer()->affineTransform(shown).concat(superview.toImage);
    const bool isShown =
        superview.isShown && !view.isHidden() && shown.opacity > 0 && isPlaceable(toImage);

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
    isMoved = clip(view, superview) || isMoved;

    const bool draws = view.paints() || view.layer()->backgroundColor().alpha > 0;
    place.own = isShown && draws
                    ? place.boxInImage(view.bounds(), scale_).intersection(place.visible)
                    : NSBackingRect{};
    if (isMoved || place.isRecolored || place.own != before.own) {
        damagePlaces(view, before, wasPlain, isSuperviewMoved);
        place.isPrepared = false;
    }
    place.isRecolored = false;
    return isMoved;
}

void OffscreenLayout::damagePlaces(NSView& view, const OffscreenExtent& before, bool wasPlain,
                                   bool isSuperviewMoved) {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    const bool isSame = wasPlain && place.isPlain() && !place.isRecolored;
    if (isInScroll_) {
        if (!isSame || !isMovedBy(*scroll_, before, place)) {
            damage_.add(scroll_->moved(before.own));
            damage_.add(place.own);
        }
        return;
    }
    if (isSame && !isSuperviewMoved && !scroll_) {
        scroll_ = findScroll(view, before);
        if (scroll_) {
            return;
        }
    }
    damage_.add(before.own);
    damage_.add(place.own);
}

bool OffscreenLayout::clip(const NSView& view, const OffscreenPlace& superview) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    NSBackingRect visible = superview.visibleSubviews;
    std::vector<OffscreenClip> masks;
    for (const NSViewClip& each : view.clips()) {
        cut(visible, masks, each.rect, each.transform.concat(superview.toDrawnPixels(scale_)),
            each.effectiveRadius());
    }
    NSBackingRect visibleSubviews = visible;
    std::vector<OffscreenClip> subviewMasks;
    if (view.clipsToBounds()) {
        if (place.isPixelAligned) {
            visibleSubviews =
                visible.intersection(place.boxInImage(standardized(view.bounds()), scale_));
        } else {
            cut(visibleSubviews, subviewMasks, view.bounds(), place.toImage, 0);
        }
    }
    const bool isChanged = visible != place.visible || visibleSubviews != place.visibleSubviews ||
                           masks != place.masks || subviewMasks != place.subviewMasks;
    place.visible = visible;
    place.visibleSubviews = visibleSubviews;
    place.masks = std::move(masks);
    place.subviewMasks = std::move(subviewMasks);
    return isChanged;
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

void OffscreenLayout::placeMarked(NSView& view, const OffscreenPlace& superview, bool isMoved) {
    OffscreenPlace& here = OffscreenPlace::of(view);
    if (!isMoved && !here.isMarked && !here.hasMarkedBelow) {
        return;
    }
    if (isMoved || here.isMarked) {
        isMoved = place(view, superview, isMoved);
    }
    const bool isScrolled = scroll_ && scroll_->view == &view;
    isInScroll_ = isInScroll_ || isScrolled;
    here.isMarked = false;
    here.hasMarkedBelow = false;
    here.all = here.own;
    here.boxes.clear();
    bool hasFades = false;
    for (NSView* const subview : view.subviewsInDrawingOrder()) {
        placeMarked(*subview, here, isMoved);
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
    isInScroll_ = isInScroll_ && !isScrolled;
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
