#include "platform/offscreen/OffscreenCompositor.h"

#include <algorithm>
#include <utility>

#include "orvane/commons/Trace.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/offscreen/OffscreenComposer.h"
#include "platform/offscreen/OffscreenPlace.h"
#include "platform/offscreen/OffscreenScroll.h"
#include "platform/offscreen/OffscreenTarget.h"

namespace orvane::platform {

namespace {

// The number of pixels that are composed at once: 256 KiB of them.
constexpr std::int64_t kBandArea = 65536;

// Returns the root, or the first view on it, that covers the whole image with an opaque background.
// All views that are drawn before it are its ancestors.
const NSView* findBackdrop(const NSView* root, const NSBackingRect& bounds) {
    for (const NSView* view = root; view != nullptr;) {
        if (OffscreenComposer::hidesAllBelow(*view, bounds)) {
            return view;
        }
        const OffscreenPlace& place = OffscreenPlace::of(*view);
        const bool isGroup =
            place.opacity < 1 || !place.masks.empty() || !place.subviewMasks.empty();
        const std::vector<NSView*>& subviews = view->subviewsInDrawingOrder();
        view = isGroup || subviews.empty() ? nullptr : subviews.front();
    }
    return nullptr;
}

// The area of a picture that had `area` and must cover `needed`. A view that moves must not need
// another area in each frame: the edges are at multiples of 64 pixels, and a picture that grows
// gets half its size more on the sides where it grows.
NSBackingRect grown(const NSBackingRect& area, const NSBackingRect& needed) {
    NSBackingRect result = area.united(needed);
    if (!area.isEmpty()) {
        const std::int64_t width = area.width() / 2;
        const std::int64_t height = area.height() / 2;
        result.left -= needed.left < area.left ? width : 0;
        result.right += needed.right > area.right ? width : 0;
        result.top -= needed.top < area.top ? height : 0;
        result.bottom += needed.bottom > area.bottom ? height : 0;
    }
    constexpr std::int64_t step = 64;
    return {floorDivide(result.left, step) * step, floorDivide(result.top, step) * step,
            -floorDivide(-result.right, step) * step, -floorDivide(-result.bottom, step) * step};
}

}  // namespace

OffscreenCompositor::OffscreenCompositor(Backdrop backdrop) : backdrop_(backdrop) {}
OffscreenCompositor::~OffscreenCompositor() = default;

void OffscreenCompositor::setImage(int width, int height, double scale) {
    scale_ = scale;
    bounds_ = {0, 0, width, height};
    pictures_.clear();
    pictures_.push_back(backdrop_ == Backdrop::Composed ? OffscreenTarget::create(bounds_)
                                                        : OffscreenTarget());
    damage_.setBounds(bounds_);
    layout_.setImage(bounds_, scale);
}

std::size_t OffscreenCompositor::pictureCount() const {
    return pictures_.size();
}

OffscreenCompositor::Picture OffscreenCompositor::picture(std::size_t index) const {
    return {pictures_[index].area, pictures_[index].pixels, index == 0 && isOpaque_};
}

std::optional<CGColor> OffscreenCompositor::backdropColor() const {
    return pictures_.front().area.contains(bounds_) ? std::nullopt : backdropColor_;
}

OffscreenCompositor::NativePlace OffscreenCompositor::placeOfNative(const NSView& view) {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    double opacity = place.opacity;
    std::vector<OffscreenClip> masks = place.masks;
    for (const NSView* above = view.superview(); above != nullptr; above = above->superview()) {
        const OffscreenPlace& around = OffscreenPlace::of(*above);
        opacity *= around.opacity;
        masks.insert(masks.end(), around.subviewMasks.begin(), around.subviewMasks.end());
        masks.insert(masks.end(), around.masks.begin(), around.masks.end());
    }
    return {place.toImage,          place.isShown, opacity,
            place.firstPicture + 1, place.visible, std::move(masks)};
}

void OffscreenCompositor::add(NSView& view) {
    layout_.add(view);
}

void OffscreenCompositor::setNative(NSView& view, bool isNative) {
    if (std::exchange(OffscreenPlace::of(view).isNative, isNative) != isNative) {
        natives_ += isNative ? 1 : -1;
    }
}

void OffscreenCompositor::remove(NSView& view) {
    setNative(view, false);
    layout_.remove(view);
    damage_.forget(view);
}

void OffscreenCompositor::reorder(NSView& superview) {
    layout_.markSubviews(superview);
    damage_.addReordered(superview);
}

void OffscreenCompositor::change(NSView& view) {
    layout_.mark(view);
}

void OffscreenCompositor::recolor(NSView& view) {
    layout_.markRecolored(view);
}

void OffscreenCompositor::painted(NSView& view, std::span<const NSBackingRect> rects) {
    OffscreenPlace::of(view).isProbed = false;
    damage_.addPainted(view, rects);
}

std::span<const NSBackingRect> OffscreenCompositor::compose(NSView* root, double time) {
    const commons::TraceScope trace("compose");
    if (root != nullptr) {
        layout_.update(*root, time);
    }
    assignAreas(root);
    scrolled_ = {};
    if (root != nullptr && layout_.scroll()) {
        scroll(*root);
    }
    damage_.take(composed_, scale_);
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        const OffscreenComposer composer(scale_, static_cast<int>(i));
        for (const NSBackingRect& damaged : composed_) {
            const NSBackingRect rect = damaged.intersection(pictures_[i].area);
            if (rect.isEmpty()) {
                continue;
            }
            // Bands that fit in the processor's cache while all views are drawn on them.
            const std::int64_t height = std::max<std::int64_t>(kBandArea / rect.width(), 1);
            for (std::int64_t top = rect.top; top < rect.bottom; top += height) {
                composer.compose(pictures_[i], root,
                                 {rect.left, top, rect.right, std::min(top + height, rect.bottom)});
            }
        }
    }
    if (!scrolled_.isEmpty()) {
        std::erase_if(composed_, [this](const auto& rect) { return scrolled_.contains(rect); });
        composed_.push_back(scrolled_);
    }
    return composed_;
}

// Moves the pixels of the scrolled view, or damages it if they cannot be moved.
void OffscreenCompositor::scroll(NSView& root) {
    const OffscreenScroll& scroll = *layout_.scroll();
    const auto picture = static_cast<std::size_t>(OffscreenPlace::of(*scroll.view).firstPicture);
    OffscreenTarget& target = pictures_[picture];
    if (!target.area.contains(scroll.visible) ||
        !OffscreenScrollCheck(scroll).passes(root, inFront_)) {
        damage_.add(scroll.visible);
        return;
    }
    scrolled_ = scroll.visible;
    damage_.addScrolled(scroll, scale_);
    for (const NSBackingRect& rect : inFront_) {
        damage_.add(rect);
        damage_.add(scroll.moved(rect));
    }
    // To move all pixels costs nothing, but those around the view must be drawn again. A picture
    // that a window shows stays at its address.
    const NSBackingRect& area = target.area;
    const bool isMostOfPicture = (area.area() - scrolled_.area()) * 4 <= scrolled_.area();
    if (backdrop_ == Backdrop::LeftToWindow || !isMostOfPicture ||
        !target.moveAll(scroll.dx, scroll.dy)) {
        target.movePart(scrolled_, scroll.dx, scroll.dy);
        return;
    }
    damage_.add({area.left, area.top, area.right, scrolled_.top});
    damage_.add({area.left, scrolled_.bottom, area.right, area.bottom});
    damage_.add({area.left, scrolled_.top, scrolled_.left, scrolled_.bottom});
    damage_.add({scrolled_.right, scrolled_.top, area.right, scrolled_.bottom});
}

void OffscreenCompositor::assignAreas(NSView* root) {
    const NSView* const backdrop = findBackdrop(root, bounds_);
    isOpaque_ = backdrop != nullptr;
    leftOut_ = nullptr;
    if (backdrop_ == Backdrop::LeftToWindow && isOpaque_ && backdrop->backingStore() == nullptr) {
        backdropColor_ = backdrop->layer()->backgroundColor();
        leftOut_ = backdrop;
    }
    if (natives_ == 0 && pictures_.size() == 1 && pictures_.front().area.contains(bounds_)) {
        return;
    }
    areas_.assign(1, leftOut_ != nullptr ? NSBackingRect{} : bounds_);
    if (root != nullptr) {
        assignPictures(*root, 0);
    }
    fitPictures();
}

// Returns the picture that the view's last descendant is in.
int OffscreenCompositor::assignPictures(NSView& view, int picture) {
    OffscreenPlace& place = OffscreenPlace::of(view);
    if (place.firstPicture != picture) {
        place.firstPicture = picture;
        damage_.add(place.own);
    }
    auto& area = areas_[static_cast<std::size_t>(picture)];
    if (place.isNative) {
        areas_.emplace_back();
        ++picture;
    } else if (leftOut_ == nullptr) {
        area = area.united(place.own);
    } else if (leftOut_ == &view) {
        leftOut_ = nullptr;
    }
    for (NSView* const subview : view.subviewsInDrawingOrder()) {
        picture = assignPictures(*subview, picture);
    }
    place.lastPicture = picture;
    return picture;
}

// Gives every picture the area that it needs. A picture keeps an area that is larger.
void OffscreenCompositor::fitPictures() {
    pictures_.resize(areas_.size());
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        const NSBackingRect needed = areas_[i].intersection(bounds_);
        if (needed.isEmpty()) {
            pictures_[i] = {};
        } else if (!pictures_[i].area.contains(needed)) {
            pictures_[i] =
                OffscreenTarget::create(grown(pictures_[i].area, needed).intersection(bounds_));
            damage_.add(pictures_[i].area);
        }
    }
}

}  // namespace orvane::platform
