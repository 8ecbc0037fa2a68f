#include "platform/offscreen/OffscreenScroll.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenPlace.h"

namespace orvane::platform {

namespace {

// Returns the color of all pixels of a rectangle, in the view's pixels; nothing if they differ.
std::optional<std::uint32_t> uniformColor(const NSBackingStore& store, const NSBackingRect& rect) {
    const NSBackingRect part = rect.intersection(store.area());
    if (part.isEmpty()) {
        return 0;
    }
    const auto width = static_cast<std::ptrdiff_t>(store.area().width());
    const std::uint32_t* const first =
        store.pixels() + (part.top - store.area().top) * width + (part.left - store.area().left);
    for (std::ptrdiff_t y = 0; y < part.height(); ++y) {
        const std::uint32_t* const row = first + y * width;
        // A row has one color if it equals itself moved by a pixel.
        if (*row != *first || !std::equal(row, row + part.width() - 1, row + 1)) {
            return std::nullopt;
        }
    }
    return part == rect || *first == 0 ? std::optional(*first) : std::nullopt;
}

}  // namespace

OffscreenScrollCheck::OffscreenScrollCheck(const OffscreenScroll& scroll)
    : scroll_(scroll), picture_(OffscreenPlace::of(*scroll.view).firstPicture) {}

bool OffscreenScrollCheck::passes(NSView& root, std::vector<NSBackingRect>& inFront) {
    inFront_ = &inFront;
    inFront.clear();
    return isDrawnAlone() && visit(root) && isUniform_;
}

// Whether neither the view nor a superview is drawn as part of a group, and no desktop widget is on
// the view.
bool OffscreenScrollCheck::isDrawnAlone() const {
    for (const NSView* view = scroll_.view; view != nullptr; view = view->superview()) {
        if (!OffscreenPlace::of(*view).isPlain()) {
            return false;
        }
    }
    return OffscreenPlace::of(*scroll_.view).lastPicture == picture_;
}

// Visits the views that are drawn in the rectangle, in drawing order. Returns false if one of them
// makes it impossible to move pixels.
bool OffscreenScrollCheck::visit(NSView& view) {
    if (&view == scroll_.view) {
        isInFront_ = true;
        return true;
    }
    const OffscreenPlace& place = OffscreenPlace::of(view);
    if (place.firstPicture == picture_ && !place.own.intersection(scroll_.visible).isEmpty()) {
        if (isInFront_) {
            inFront_->push_back(place.own.intersection(scroll_.visible));
        } else {
            addBehind(view);
        }
    }
    return std::ranges::all_of(place.boxes, [this](const OffscreenPlace::Box& box) {
        const NSBackingRect all{box.left, box.top, box.right, box.bottom};
        return !all.intersects(scroll_.visible) ||
               (OffscreenPlace::of(*box.view).fadesFrom == nullptr && visit(*box.view));
    });
}

void OffscreenScrollCheck::addBehind(const NSView& view) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    const NSBackingRect part = place.own.intersection(scroll_.visible);
    const bool isEverywhere = part == scroll_.visible;
    if (!place.isPlain()) {
        isUniform_ = false;
        return;
    }
    if (const double alpha = view.layer()->backgroundColor().alpha; alpha > 0) {
        isUniform_ = isEverywhere && (isUniform_ || alpha >= 1);
    }
    const NSBackingStore* const store = view.backingStore();
    if (store == nullptr || store->pixels() == nullptr) {
        return;
    }
    const NSBackingRect inView = part.movedBy(-place.originX, -place.originY);
    if (!place.isProbed || place.probed != inView) {
        place.isProbed = true;
        place.probed = inView;
        place.probedColor = uniformColor(*store, inView);
    }
    if (place.probedColor != std::uint32_t{0}) {
        const bool isOpaque = place.probedColor && *place.probedColor >> 24 == 255;
        isUniform_ = isEverywhere && place.probedColor && (isUniform_ || isOpaque);
    }
}

}  // namespace orvane::platform
