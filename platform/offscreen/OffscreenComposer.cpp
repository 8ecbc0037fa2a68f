#include "platform/offscreen/OffscreenComposer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/offscreen/OffscreenPlace.h"
#include "platform/raster/CGBitmapContext.h"

namespace orvane::platform {

namespace {

void drawBackground(OffscreenTarget& target, const NSView& view, double alpha,
                    const NSBackingRect& rect) {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    CGColor color = view.layer()->backgroundColor();
    color.alpha *= alpha;
    const NSBackingRect part = rect.movedBy(-target.area.left, -target.area.top);
    if (place.isPixelAligned) {
        const auto level = [&color](double component) {
            return static_cast<std::uint16_t>(std::lround(
                std::clamp(component, 0.0, 1.0) * std::clamp(color.alpha, 0.0, 1.0) * 65535));
        };
        const pixman_color_t fill{level(color.red), level(color.green), level(color.blue),
                                  level(1)};
        const pixman_box32_t box{
            static_cast<std::int32_t>(part.left), static_cast<std::int32_t>(part.top),
            static_cast<std::int32_t>(part.right), static_cast<std::int32_t>(part.bottom)};
        pixman_image_fill_boxes(PIXMAN_OP_OVER, target.image.get(), &fill, 1, &box);
        return;
    }
    CGBitmapContext canvas(target.pixels.get(), static_cast<int>(target.area.width()),
                           static_cast<int>(target.area.height()),
                           static_cast<std::size_t>(target.area.width()) * 4);
    canvas.clipToRect(part.toPoints(1));
    canvas.translateCTM(static_cast<double>(-target.area.left),
                        static_cast<double>(-target.area.top));
    canvas.concatCTM(place.toImage);
    canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
    canvas.addRect(view.bounds());
    canvas.drawPath(CGPathDrawingMode::Fill);
}

void copyContents(OffscreenTarget& target, const NSBackingStore& store, const OffscreenPlace& place,
                  const NSBackingRect& rect) {
    const NSBackingRect stored = store.area().movedBy(place.originX, place.originY);
    const NSBackingRect part = rect.intersection(stored);
    if (!part.isEmpty()) {
        const auto stride = static_cast<std::ptrdiff_t>(stored.width());
        blendPicture(target.bitmap(), target.toBitmap(part),
                     store.pixels() + (part.top - stored.top) * stride + (part.left - stored.left),
                     stride);
    }
}

// Removes from a group what is outside the clips.
void mask(OffscreenTarget& group, const std::vector<OffscreenClip>& clips) {
    for (const OffscreenClip& clip : clips) {
        OffscreenTarget inside = OffscreenTarget::create(group.area);
        CGBitmapContext canvas(inside.pixels.get(), static_cast<int>(inside.area.width()),
                               static_cast<int>(inside.area.height()),
                               static_cast<std::size_t>(inside.area.width()) * 4);
        canvas.translateCTM(static_cast<double>(-inside.area.left),
                            static_cast<double>(-inside.area.top));
        canvas.concatCTM(clip.toImage);
        canvas.setRGBFillColor(1, 1, 1, 1);
        if (clip.cornerRadius > 0) {
            CGPath outline;
            outline.addRoundedRect(standardized(clip.rect), clip.cornerRadius, clip.cornerRadius);
            canvas.addPath(outline);
        } else {
            canvas.addRect(clip.rect);
        }
        canvas.drawPath(CGPathDrawingMode::Fill);
        group.draw(inside, PIXMAN_OP_IN_REVERSE, 1);
    }
}

}  // namespace

bool OffscreenComposer::hidesAllBelow(const NSView& view, const NSBackingRect& rect) {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    return place.isPixelAligned && place.opacity == 1 && place.masks.empty() &&
           view.layer()->backgroundColor().alpha >= 1 && place.own.contains(rect);
}

void OffscreenComposer::compose(OffscreenTarget& image, NSView* root,
                                const NSBackingRect& rect) const {
    if (root == nullptr || picture_ > 0 || !hidesAllBelow(*root, rect)) {
        pixman_fill(image.pixels.get(), static_cast<int>(image.area.width()), 32,
                    static_cast<int>(rect.left - image.area.left),
                    static_cast<int>(rect.top - image.area.top), static_cast<int>(rect.width()),
                    static_cast<int>(rect.height()), 0);
    }
    if (root != nullptr) {
        drawView(image, *root, rect);
    }
}

void OffscreenComposer::drawView(OffscreenTarget& target, NSView& view,
                                 const NSBackingRect& rect) const {
    const OffscreenPlace& place = OffscreenPlace::of(view);
    if (!place.all.intersects(rect) || picture_ < place.firstPicture ||
        picture_ > place.lastPicture) {
        return;
    }
    const bool isHere = picture_ == place.firstPicture;
    const bool hasBackground = isHere && view.layer()->backgroundColor().alpha > 0;
    const bool hasContents = isHere && view.backingStore() != nullptr;
    const auto draw = [&](OffscreenTarget& on, double alpha, const NSBackingRect& part) {
        if (hasBackground && place.own.intersects(part)) {
            drawBackground(on, view, alpha, place.own.intersection(part));
        }
        if (hasContents && place.own.intersects(part)) {
            drawContents(on, view, alpha, place.own.intersection(part));
        }
        drawSubviews(on, place, part);
    };
    const bool isOnePicture = view.subviews().empty() && !(hasBackground && hasContents);
    if (place.masks.empty() && (place.opacity == 1 || isOnePicture)) {
        draw(target, place.opacity, rect);
        return;
    }
    OffscreenTarget group = OffscreenTarget::create(place.all.intersection(rect));
    draw(group, 1, group.area);
    mask(group, place.masks);
    target.draw(group, PIXMAN_OP_OVER, place.opacity);
}

void OffscreenComposer::drawSubviews(OffscreenTarget& target, const OffscreenPlace& place,
                                     const NSBackingRect& rect) const {
    const NSBackingRect part = place.all.intersection(rect);
    if (place.subviewMasks.empty() || place.boxes.empty() || part.isEmpty()) {
        drawUnmaskedSubviews(target, place, rect);
        return;
    }
    OffscreenTarget group = OffscreenTarget::create(part);
    drawUnmaskedSubviews(group, place, part);
    mask(group, place.subviewMasks);
    target.draw(group, PIXMAN_OP_OVER, 1);
}

void OffscreenComposer::drawUnmaskedSubviews(OffscreenTarget& target, const OffscreenPlace& place,
                                             const NSBackingRect& rect) const {
    for (const OffscreenPlace::Box& box : place.boxes) {
        if (box.left < rect.right && rect.left < box.right && box.top < rect.bottom &&
            rect.top < box.bottom) {
            if (OffscreenPlace::of(*box.view).fadesFrom != nullptr) {
                drawFade(
                    target, *box.view,
                    NSBackingRect{box.left, box.top, box.right, box.bottom}.intersection(rect));
            } else {
                drawView(target, *box.view, rect);
            }
        }
    }
}

void OffscreenComposer::drawFade(OffscreenTarget& target, NSView& topmost,
                                 const NSBackingRect& rect) const {
    // The opacity of each view is its share. The shares are added and not drawn over one another,
    // so that nothing behind the views is visible where all of them are opaque.
    OffscreenTarget sum = OffscreenTarget::create(rect);
    drawView(sum, topmost, rect);
    for (NSView* view = OffscreenPlace::of(topmost).fadesFrom; view != nullptr;
         view = OffscreenPlace::of(*view).fadesFrom) {
        OffscreenTarget share = OffscreenTarget::create(rect);
        drawView(share, *view, rect);
        sum.draw(share, PIXMAN_OP_ADD, 1);
    }
    target.draw(sum, PIXMAN_OP_OVER, 1);
}

void OffscreenComposer::drawContents(OffscreenTarget& target, const NSView& view, double alpha,
                                     const NSBackingRect& rect) const {
    const NSBackingStore& store = *view.backingStore();
    if (store.pixels() == nullptr) {
        return;
    }
    OffscreenPlace& place = OffscreenPlace::of(view);
    if (place.isPixelAligned && alpha == 1) {
        copyContents(target, store, place, rect);
        return;
    }
    if (!place.contents || place.pixels != store.pixels() || place.area != store.area()) {
        place.pixels = store.pixels();
        place.area = store.area();
        place.isPrepared = false;
        place.contents = wrapPixels(place.pixels, static_cast<int>(place.area.width()),
                                    static_cast<int>(place.area.height()),
                                    static_cast<std::ptrdiff_t>(place.area.width()));
    }
    if (!place.isPrepared) {
        prepareContents(place);
    }
    if (!place.contents) {
        return;
    }
    const PixmanImage mask = opacityMask(alpha);
    // The origin of the source in the image: the stored area's corner if pixels are copied
    // unchanged, otherwise the corner that prepareContents made the origin.
    const std::int64_t originX =
        place.isPixelAligned ? place.originX + place.area.left : place.own.left;
    const std::int64_t originY =
        place.isPixelAligned ? place.originY + place.area.top : place.own.top;
    pixman_image_composite32(PIXMAN_OP_OVER, place.contents.get(), mask.get(), target.image.get(),
                             static_cast<int>(rect.left - originX),
                             static_cast<int>(rect.top - originY), 0, 0,
                             static_cast<int>(rect.left - target.area.left),
                             static_cast<int>(rect.top - target.area.top),
                             static_cast<int>(rect.width()), static_cast<int>(rect.height()));
}

void OffscreenComposer::prepareContents(OffscreenPlace& place) const {
    place.isPrepared = true;
    if (place.isPixelAligned) {
        pixman_image_set_transform(place.contents.get(), nullptr);
        pixman_image_set_filter(place.contents.get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
        return;
    }
    // Maps the image's pixels to the store's. The origin is the corner of the view's box and not of
    // the image, because Pixman's coordinates have 16 bits. It must not depend on the rectangle
    // that is being composed, or pieces of the image would differ from the whole.
    const CGAffineTransform t =
        CGAffineTransform::makeTranslation(static_cast<double>(place.own.left),
                                           static_cast<double>(place.own.top))
            .concat(place.toImage.invert().value_or(CGAffineTransform{}))
            .concat({scale_, 0, 0, scale_, static_cast<double>(-place.area.left),
                     static_cast<double>(-place.area.top)});
    const pixman_f_transform exact{{{t.a, t.c, t.tx}, {t.b, t.d, t.ty}, {0, 0, 1}}};
    pixman_transform_t transform;
    if (pixman_transform_from_pixman_f_transform(&transform, &exact)) {
        pixman_image_set_transform(place.contents.get(), &transform);
        pixman_image_set_filter(place.contents.get(), PIXMAN_FILTER_BILINEAR, nullptr, 0);
    } else {
        place.contents.reset();
    }
}

}  // namespace orvane::platform
