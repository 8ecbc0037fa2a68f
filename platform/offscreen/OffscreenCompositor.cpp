#include "platform/offscreen/OffscreenCompositor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "platform/appkit/NSBackingStore.h"
#include "platform/raster/CGBitmapContext.h"

namespace orvane::platform {

namespace {

// In pixels: 256 KiB of them.
constexpr std::int64_t bandArea = 65536;

// As far as the raster library's numbers go, with room for what it adds to them.
constexpr double longestStep = 8192;

// Whether a view so mapped shows anything, and its mapping can be undone in the library's numbers.
bool isPlaceable(const CGAffineTransform& t) {
    const std::optional<CGAffineTransform> back = t.invert();
    return back && std::max({std::abs(back->a), std::abs(back->b), std::abs(back->c),
                             std::abs(back->d)}) < longestStep;
}

pixman_image_t* solid(double alpha) {
    const auto level = static_cast<std::uint16_t>(std::lround(alpha * 65535));
    const pixman_color_t color{0, 0, 0, level};
    return pixman_image_create_solid_fill(&color);
}

}  // namespace

// What the compositor keeps with a view.
struct OffscreenCompositor::Place final : NSViewRealization {
    CGAffineTransform toImage;  // from the view's points to the image's pixels
    bool isShown = false;       // neither it nor a superview is hidden or fully transparent
    double opacity = 1;
    const CALayer* fadesFrom = nullptr;
    // Only moved: it is drawn at the nearest whole pixel, the pixels of its store copied as they
    // are.
    bool isPixelAligned = false;
    std::int64_t originX = 0;
    std::int64_t originY = 0;

    NSBackingRect own;  // what the view itself draws, in the image; empty when nothing shows
    NSBackingRect all;  // with its subviews
    // Where its subviews and theirs draw, in drawing order, side by side: with many damaged
    // rectangles and many views, finding the few that meet is most of the work.
    struct Box {
        std::int32_t left, top, right, bottom;
        NSView* view;
    };
    std::vector<Box> boxes;

    std::size_t rank = 0;  // in the drawing order of its siblings; 0 before it was looked at
    bool isMarked = false;
    bool isRecolored = false;
    bool hasMarkedBelow = false;

    // The pixels of the backing store, laid out for drawing.
    PixmanImage contents;
    const std::uint32_t* pixels = nullptr;
    NSBackingRect area;
    bool isLaidOut = false;
};

OffscreenCompositor::OffscreenCompositor() = default;
OffscreenCompositor::~OffscreenCompositor() = default;

OffscreenCompositor::Place& OffscreenCompositor::placeOf(const NSView& view) {
    return static_cast<Place&>(*view.realization());
}

OffscreenCompositor::Target OffscreenCompositor::Target::create(const NSBackingRect& area) {
    Target target;
    target.area = area;
    target.pixels = std::make_unique<std::uint32_t[]>(static_cast<std::size_t>(area.area()));
    target.image =
        wrapPixels(target.pixels.get(), static_cast<int>(area.width()),
                   static_cast<int>(area.height()), static_cast<std::ptrdiff_t>(area.width()));
    return target;
}

Bitmap OffscreenCompositor::Target::bitmap() const {
    return {pixels.get(), static_cast<int>(area.width()), static_cast<int>(area.height()),
            static_cast<std::ptrdiff_t>(area.width())};
}

PixelRect OffscreenCompositor::Target::toPixels(const NSBackingRect& rect) const {
    const NSBackingRect own = rect.movedBy(-area.left, -area.top);
    return {static_cast<int>(own.left), static_cast<int>(own.top), static_cast<int>(own.right),
            static_cast<int>(own.bottom)};
}

void OffscreenCompositor::setImage(int width, int height, double scale) {
    scale_ = scale;
    bounds_ = {0, 0, width, height};
    image_ = Target::create(bounds_);
    damage_.setBounds(bounds_);
    damage_.addAll();
    isNew_ = true;
}

// ---- changes ----

void OffscreenCompositor::add(NSView& view) {
    view.setRealization(std::make_unique<Place>());
    mark(view);
}

void OffscreenCompositor::remove(NSView& view) {
    const Place& place = placeOf(view);
    damage_.add(place.own);
    fading_ -= place.fadesFrom ? 1 : 0;
    std::erase_if(painted_, [&view](const Painted& painted) { return painted.view == &view; });
    if (view.superview()) {
        placeOf(*view.superview()).boxes.clear();
        markSubviews(*view.superview());
    }
}

void OffscreenCompositor::reorder(NSView& superview) {
    // The longest row of views that kept their order among one another stays; the others have
    // moved, and only where one of them is can the picture be another. ends_[n] closes the best row
    // of n + 1 views so far, the one that ends in the lowest rank; before_ leads back along a row.
    markSubviews(superview);
    const std::vector<NSView*>& order = superview.subviewsInDrawingOrder();
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    ends_.clear();
    before_.assign(order.size(), none);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::size_t rank = placeOf(*order[i]).rank;
        if (rank == 0) {
            continue;  // new: it is damaged when it is placed
        }
        const auto place = std::lower_bound(
            ends_.begin(), ends_.end(), rank,
            [&order](std::size_t end, std::size_t r) { return placeOf(*order[end]).rank < r; });
        before_[i] = place == ends_.begin() ? none : *(place - 1);
        if (place == ends_.end()) {
            ends_.push_back(i);
        } else {
            *place = i;
        }
    }
    std::size_t kept = ends_.empty() ? none : ends_.back();
    for (std::size_t i = order.size(); i-- > 0;) {
        Place& place = placeOf(*order[i]);
        if (i == kept) {
            kept = before_[i];
        } else {
            damage_.add(place.all);
        }
        place.rank = i + 1;
    }
}

void OffscreenCompositor::change(NSView& view) {
    mark(view);
}

void OffscreenCompositor::recolor(NSView& view) {
    placeOf(view).isRecolored = true;
    mark(view);
}

void OffscreenCompositor::painted(NSView& view, std::span<const NSBackingRect> rects) {
    for (const NSBackingRect& rect : rects) {
        painted_.push_back({&view, rect});
    }
}

void OffscreenCompositor::mark(NSView& view) {
    placeOf(view).isMarked = true;
    if (view.superview()) {
        markSubviews(*view.superview());
    }
}

void OffscreenCompositor::markSubviews(NSView& view) {
    for (NSView* above = &view; above && !placeOf(*above).hasMarkedBelow;
         above = above->superview()) {
        placeOf(*above).hasMarkedBelow = true;
    }
}

// ---- where views stand ----

NSBackingRect OffscreenCompositor::boxInImage(const Place& place, const CGRect& box) const {
    if (place.isPixelAligned) {
        return NSBackingRect::around(box, scale_)
            .movedBy(place.originX, place.originY)
            .intersection(bounds_);
    }
    // Filtering reaches one pixel beyond the edge.
    const NSBackingRect mapped = NSBackingRect::around(place.toImage.apply(box), 1);
    return NSBackingRect{mapped.left - 1, mapped.top - 1, mapped.right + 1, mapped.bottom + 1}
        .intersection(bounds_);
}

bool OffscreenCompositor::place(const NSView& view, const CGAffineTransform& superview,
                                bool isShown, bool isMoved) {
    Place& place = placeOf(view);
    const CALayerPresentation shown = view.layer()->presentation(time_);
    const CGAffineTransform toImage = view.layer()->affineTransform(shown).concat(superview);
    isShown = isShown && !view.isHidden() && shown.opacity > 0 && isPlaceable(toImage);

    isMoved = isMoved || toImage != place.toImage || isShown != place.isShown ||
              shown.opacity != place.opacity || shown.fadesFrom != place.fadesFrom;
    fading_ += (shown.fadesFrom ? 1 : 0) - (place.fadesFrom ? 1 : 0);
    place.toImage = toImage;
    place.isShown = isShown;
    place.opacity = shown.opacity;
    place.fadesFrom = shown.fadesFrom;
    place.isPixelAligned =
        toImage.a == scale_ && toImage.d == scale_ && toImage.b == 0 && toImage.c == 0;
    place.originX = NSBackingRect::floorPixel(toImage.tx + 0.5);
    place.originY = NSBackingRect::floorPixel(toImage.ty + 0.5);

    const bool draws = view.paints() || view.layer()->backgroundColor().alpha > 0;
    const NSBackingRect own = isShown && draws ? boxInImage(place, view.bounds()) : NSBackingRect{};
    if (isMoved || place.isRecolored || own != place.own) {
        damage_.add(place.own);
        damage_.add(own);
        place.isLaidOut = false;
    }
    place.own = own;
    place.isRecolored = false;
    return isMoved;
}

void OffscreenCompositor::placeMarked(NSView& view, const CGAffineTransform& superview,
                                      bool isShown, bool isMoved) {
    Place& here = placeOf(view);
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
    for (NSView* subview : view.subviewsInDrawingOrder()) {
        placeMarked(*subview, here.toImage, here.isShown, isMoved);
        const NSBackingRect& box = placeOf(*subview).all;
        if (!box.isEmpty()) {
            here.all = here.all.united(box);
            here.boxes.push_back({static_cast<std::int32_t>(box.left),
                                  static_cast<std::int32_t>(box.top),
                                  static_cast<std::int32_t>(box.right),
                                  static_cast<std::int32_t>(box.bottom), subview});
        }
    }
}

void OffscreenCompositor::damagePainted() {
    for (const auto& [view, rect] : painted_) {
        const Place& place = placeOf(*view);
        if (place.isPixelAligned) {
            damage_.add(rect.movedBy(place.originX, place.originY).intersection(place.own));
        } else {
            damage_.add(boxInImage(place, rect.toPoints(scale_)).intersection(place.own));
        }
    }
    painted_.clear();
}

// ---- composing ----

std::span<const NSBackingRect> OffscreenCompositor::compose(NSView* root, double time) {
    time_ = time;
    if (root) {
        placeMarked(*root, {scale_, 0, 0, scale_, 0, 0}, true, isNew_);
        damagePainted();
    }
    isNew_ = false;
    damage_.take(composed_);
    for (const NSBackingRect& rect : composed_) {
        // In bands that stay in the processor's cache while one view after the other is laid on.
        const std::int64_t height = std::max<std::int64_t>(bandArea / rect.width(), 1);
        for (std::int64_t top = rect.top; top < rect.bottom; top += height) {
            composeRect(root, {rect.left, top, rect.right, std::min(top + height, rect.bottom)});
        }
    }
    return composed_;
}

void OffscreenCompositor::composeRect(NSView* root, const NSBackingRect& rect) {
    if (!root || !hidesAllBelow(*root, rect)) {
        pixman_fill(image_.pixels.get(), width(), 32, static_cast<int>(rect.left),
                    static_cast<int>(rect.top), static_cast<int>(rect.width()),
                    static_cast<int>(rect.height()), 0);
    }
    if (root) {
        composeView(image_, *root, rect);
    }
}

bool OffscreenCompositor::hidesAllBelow(const NSView& view, const NSBackingRect& rect) {
    const Place& place = placeOf(view);
    return place.isPixelAligned && place.opacity == 1 &&
           view.layer()->backgroundColor().alpha >= 1 && place.own.contains(rect);
}

void OffscreenCompositor::composeView(Target& target, NSView& view, const NSBackingRect& rect) {
    const Place& place = placeOf(view);
    if (!place.all.intersects(rect)) {
        return;
    }
    const bool hasBackground = view.layer()->backgroundColor().alpha > 0;
    const bool hasContents = view.backingStore() != nullptr;
    const auto draw = [&](Target& on, double alpha, const NSBackingRect& part) {
        if (hasBackground && place.own.intersects(part)) {
            drawBackground(on, view, alpha, place.own.intersection(part));
        }
        if (hasContents && place.own.intersects(part)) {
            drawContents(on, view, alpha, place.own.intersection(part));
        }
        composeSubviews(on, place, part);
    };
    const bool isOnePicture = view.subviews().empty() && !(hasBackground && hasContents);
    if (place.opacity == 1 || isOnePicture) {
        draw(target, place.opacity, rect);
        return;
    }
    Target group = Target::create(place.all.intersection(rect));
    draw(group, 1, group.area);
    drawGroup(target, group, PIXMAN_OP_OVER, place.opacity);
}

void OffscreenCompositor::composeSubviews(Target& target, const Place& place,
                                          const NSBackingRect& rect) {
    if (fading_ > 0) {
        composeFading(target, place, rect);
        return;
    }
    for (const Place::Box& box : place.boxes) {
        if (box.left < rect.right && rect.left < box.right && box.top < rect.bottom &&
            rect.top < box.bottom) {
            composeView(target, *box.view, rect);
        }
    }
}

void OffscreenCompositor::composeFading(Target& target, const Place& place,
                                        const NSBackingRect& rect) {
    const auto find = [&place](const auto& isIt) -> NSView* {
        const auto found = std::find_if(place.boxes.begin(), place.boxes.end(), isIt);
        return found == place.boxes.end() ? nullptr : found->view;
    };
    for (const Place::Box& box : place.boxes) {
        const CALayer* layer = box.view->layer();
        const CALayer* from = placeOf(*box.view).fadesFrom;
        NSView* outgoing =
            find([from](const Place::Box& other) { return other.view->layer() == from; });
        const NSView* incoming = find(
            [layer](const Place::Box& other) { return placeOf(*other.view).fadesFrom == layer; });
        // The two stand where the incoming one does, in whichever rectangle.
        if (outgoing) {
            composeFade(target, *outgoing, *box.view, rect);
        } else if (!incoming) {
            composeView(target, *box.view, rect);
        }
    }
}

void OffscreenCompositor::composeFade(Target& target, NSView& outgoing, NSView& incoming,
                                      const NSBackingRect& rect) {
    const NSBackingRect area =
        placeOf(outgoing).all.united(placeOf(incoming).all).intersection(rect);
    if (area.isEmpty()) {
        return;
    }
    // Each has its share as its opacity. Added, not laid over one another, the shares make up the
    // whole: where both are opaque nothing behind shines through.
    Target both = Target::create(area);
    composeView(both, outgoing, area);
    Target second = Target::create(area);
    composeView(second, incoming, area);
    drawGroup(both, second, PIXMAN_OP_ADD, 1);
    drawGroup(target, both, PIXMAN_OP_OVER, 1);
}

void OffscreenCompositor::drawGroup(Target& target, const Target& group, pixman_op_t blend,
                                    double alpha) {
    const PixmanImage mask(alpha < 1 ? solid(alpha) : nullptr);
    pixman_image_composite32(blend, group.image.get(), mask.get(), target.image.get(), 0, 0, 0, 0,
                             static_cast<int>(group.area.left - target.area.left),
                             static_cast<int>(group.area.top - target.area.top),
                             static_cast<int>(group.area.width()),
                             static_cast<int>(group.area.height()));
}

void OffscreenCompositor::drawBackground(Target& target, const NSView& view, double alpha,
                                         const NSBackingRect& rect) {
    const Place& place = placeOf(view);
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

void OffscreenCompositor::drawContents(Target& target, const NSView& view, double alpha,
                                       const NSBackingRect& rect) {
    const NSBackingStore& store = *view.backingStore();
    if (!store.pixels()) {
        return;
    }
    Place& place = placeOf(view);
    if (place.isPixelAligned && alpha == 1) {
        copyContents(target, store, place, rect);
        return;
    }
    if (!place.contents || place.pixels != store.pixels() || place.area != store.area()) {
        place.pixels = store.pixels();
        place.area = store.area();
        place.isLaidOut = false;
        place.contents = wrapPixels(place.pixels, static_cast<int>(place.area.width()),
                                    static_cast<int>(place.area.height()),
                                    static_cast<std::ptrdiff_t>(place.area.width()));
    }
    if (!place.isLaidOut) {
        layOut(place);
    }
    if (!place.contents) {
        return;
    }
    const PixmanImage mask(alpha < 1 ? solid(alpha) : nullptr);
    // Where the rectangle begins in the source: in its own pixels when they are copied as they are,
    // otherwise in those of the image, from the corner that layOut made the origin.
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

void OffscreenCompositor::copyContents(Target& target, const NSBackingStore& store,
                                       const Place& place, const NSBackingRect& rect) {
    const NSBackingRect stored = store.area().movedBy(place.originX, place.originY);
    const NSBackingRect part = rect.intersection(stored);
    if (!part.isEmpty()) {
        const auto stride = static_cast<std::ptrdiff_t>(stored.width());
        blendPicture(target.bitmap(), target.toPixels(part),
                     store.pixels() + (part.top - stored.top) * stride + (part.left - stored.left),
                     stride);
    }
}

void OffscreenCompositor::layOut(Place& place) const {
    place.isLaidOut = true;
    if (place.isPixelAligned) {
        pixman_image_set_transform(place.contents.get(), nullptr);
        pixman_image_set_filter(place.contents.get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
        return;
    }
    // From the image's pixels back to the store's. It starts at the corner of the view's box, not
    // of the image: the library's numbers are short. It must not depend on the rectangle that is
    // composed, or the pieces would not fit together to the last bit.
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
