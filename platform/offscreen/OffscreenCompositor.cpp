#include "platform/offscreen/OffscreenCompositor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "platform/appkit/NSBackingStore.h"

namespace orvane::platform {

namespace {

// Less than this of the image's area for the whole of a view's unit square is nothing to be seen,
// and its inverse more than the raster library's numbers hold.
constexpr double smallestArea = 1e-8;

bool isPlaceable(const CGAffineTransform& t) {
    const double area = std::abs(t.a * t.d - t.b * t.c);
    return area > smallestArea && std::isfinite(area) && std::isfinite(t.tx) && std::isfinite(t.ty);
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

    std::size_t rank = 0;  // in the drawing order of its siblings; 0 before it was looked at
    bool isMarked = false;
    bool isRecolored = false;
    bool hasMarkedBelow = false;

    // A handle on the pixels of the backing store.
    Surface contents;
    const std::uint32_t* pixels = nullptr;
    NSBackingRect area;
};

OffscreenCompositor::OffscreenCompositor() = default;
OffscreenCompositor::~OffscreenCompositor() = default;

OffscreenCompositor::Place& OffscreenCompositor::placeOf(const NSView& view) {
    return static_cast<Place&>(*view.realization());
}

void OffscreenCompositor::setImage(int width, int height, double scale) {
    cairo_.reset();
    image_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    cairo_.reset(cairo_create(image_.get()));
    scale_ = scale;
    bounds_ = {0, 0, cairo_image_surface_get_width(image_.get()),
               cairo_image_surface_get_height(image_.get())};
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
}

void OffscreenCompositor::reorder(NSView& superview) {
    // Of each two that changed sides the one in front now is damaged: only where it is can they
    // look different. Those that came and went damage by themselves.
    std::size_t highest = 0;
    std::size_t rank = 0;
    for (const NSView* view : superview.subviewsInDrawingOrder()) {
        Place& place = placeOf(*view);
        if (place.rank < highest) {
            damage_.add(place.all);
        }
        highest = std::max(highest, place.rank);
        place.rank = ++rank;
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
    for (NSView* above = view.superview(); above && !placeOf(*above).hasMarkedBelow;
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

// True when the view shows otherwise than before, its subviews with it.
bool OffscreenCompositor::place(const NSView& view, const CGAffineTransform& superview,
                                bool isShown) {
    Place& place = placeOf(view);
    const CALayerPresentation shown = view.layer()->presentation(time_);
    const CGAffineTransform toImage = view.layer()->affineTransform(shown).concat(superview);
    isShown = isShown && !view.isHidden() && shown.opacity > 0 && isPlaceable(toImage);

    const bool isOther = toImage != place.toImage || isShown != place.isShown ||
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
    if (isOther || place.isRecolored || own != place.own) {
        damage_.add(place.own);
        damage_.add(own);
    }
    place.own = own;
    place.isRecolored = false;
    return isOther;
}

void OffscreenCompositor::placeMarked(NSView& view, const CGAffineTransform& superview,
                                      bool isShown, bool isMoved) {
    Place& here = placeOf(view);
    if (!isMoved && !here.isMarked && !here.hasMarkedBelow) {
        return;
    }
    if (isMoved || here.isMarked) {
        isMoved = place(view, superview, isShown) || isMoved;
    }
    here.isMarked = false;
    here.hasMarkedBelow = false;
    here.all = here.own;
    for (const std::shared_ptr<NSView>& subview : view.subviews()) {
        placeMarked(*subview, here.toImage, here.isShown, isMoved);
        here.all = here.all.united(placeOf(*subview).all);
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
        cairo_save(cairo_.get());
        cairo_rectangle(cairo_.get(), static_cast<double>(rect.left), static_cast<double>(rect.top),
                        static_cast<double>(rect.width()), static_cast<double>(rect.height()));
        cairo_clip(cairo_.get());
        cairo_set_operator(cairo_.get(), CAIRO_OPERATOR_CLEAR);
        cairo_paint(cairo_.get());
        cairo_set_operator(cairo_.get(), CAIRO_OPERATOR_OVER);
        if (root) {
            composeView(*root, rect);
        }
        cairo_restore(cairo_.get());
    }
    cairo_surface_flush(image_.get());
    return composed_;
}

void OffscreenCompositor::composeView(NSView& view, const NSBackingRect& rect) {
    Place& place = placeOf(view);
    if (!place.all.intersects(rect)) {
        return;
    }
    const bool hasBackground = view.layer()->backgroundColor().alpha > 0;
    const bool hasContents = view.backingStore() != nullptr;
    const bool isOnePicture = view.subviews().empty() && !(hasBackground && hasContents);
    const bool isGroup = place.opacity < 1 && !isOnePicture;
    const double alpha = isGroup ? 1 : place.opacity;
    if (isGroup) {
        beginGroup(place.all.intersection(rect));
    }
    if (place.own.intersects(rect)) {
        if (hasBackground) {
            drawBackground(view, place, alpha);
        }
        if (hasContents) {
            drawContents(view, place, alpha);
        }
    }
    composeSubviews(view, rect);
    if (isGroup) {
        endGroup();
        cairo_paint_with_alpha(cairo_.get(), place.opacity);
        cairo_restore(cairo_.get());
    }
}

void OffscreenCompositor::composeSubviews(NSView& view, const NSBackingRect& rect) {
    const std::vector<NSView*>& order = view.subviewsInDrawingOrder();
    for (NSView* subview : order) {
        if (fading_ == 0) {
            composeView(*subview, rect);
            continue;
        }
        const CALayer* layer = subview->layer();
        const bool fadesInto = std::any_of(
            order.begin(), order.end(),
            [layer](const NSView* other) { return placeOf(*other).fadesFrom == layer; });
        const CALayer* from = placeOf(*subview).fadesFrom;
        const auto outgoing = std::find_if(order.begin(), order.end(), [from](const NSView* other) {
            return other->layer() == from;
        });
        if (from && outgoing != order.end()) {
            composeFade(**outgoing, *subview, rect);
        } else if (!fadesInto) {
            composeView(*subview, rect);
        }
    }
}

void OffscreenCompositor::composeFade(NSView& outgoing, NSView& incoming,
                                      const NSBackingRect& rect) {
    const NSBackingRect area = placeOf(outgoing).all.united(placeOf(incoming).all);
    if (!area.intersects(rect)) {
        return;
    }
    // Each has its share as its opacity. Added, not laid over one another, the shares make up the
    // whole: where both are opaque nothing behind shines through.
    beginGroup(area.intersection(rect));
    composeView(outgoing, rect);
    beginGroup(area.intersection(rect));
    composeView(incoming, rect);
    endGroup();
    cairo_set_operator(cairo_.get(), CAIRO_OPERATOR_ADD);
    cairo_paint(cairo_.get());
    cairo_restore(cairo_.get());
    endGroup();
    cairo_paint(cairo_.get());
    cairo_restore(cairo_.get());
}

void OffscreenCompositor::beginGroup(const NSBackingRect& rect) {
    cairo_save(cairo_.get());
    cairo_rectangle(cairo_.get(), static_cast<double>(rect.left), static_cast<double>(rect.top),
                    static_cast<double>(rect.width()), static_cast<double>(rect.height()));
    cairo_clip(cairo_.get());
    cairo_push_group(cairo_.get());
}

void OffscreenCompositor::endGroup() {
    cairo_pop_group_to_source(cairo_.get());
}

void OffscreenCompositor::drawBackground(const NSView& view, const Place& place, double alpha) {
    const CGColor& color = view.layer()->backgroundColor();
    cairo_set_source_rgba(cairo_.get(), color.red, color.green, color.blue, color.alpha * alpha);
    if (place.isPixelAligned) {
        cairo_rectangle(cairo_.get(), static_cast<double>(place.own.left),
                        static_cast<double>(place.own.top), static_cast<double>(place.own.width()),
                        static_cast<double>(place.own.height()));
    } else {
        const CGAffineTransform& t = place.toImage;
        const cairo_matrix_t matrix{t.a, t.b, t.c, t.d, t.tx, t.ty};
        cairo_set_matrix(cairo_.get(), &matrix);
        cairo_rectangle(cairo_.get(), 0, 0, view.bounds().size.width, view.bounds().size.height);
        cairo_identity_matrix(cairo_.get());
    }
    cairo_fill(cairo_.get());
}

void OffscreenCompositor::drawContents(const NSView& view, Place& place, double alpha) {
    const NSBackingStore& store = *view.backingStore();
    if (place.pixels != store.pixels() || place.area != store.area()) {
        place.pixels = store.pixels();
        place.area = store.area();
        // The library's interface knows no constant surfaces; nothing draws on this one.
        auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(place.pixels));
        place.contents.reset(cairo_image_surface_create_for_data(
            bytes, CAIRO_FORMAT_ARGB32, static_cast<int>(place.area.width()),
            static_cast<int>(place.area.height()), static_cast<int>(store.bytesPerRow())));
    }
    if (!place.pixels) {
        return;
    }
    cairo_surface_mark_dirty(place.contents.get());
    if (place.isPixelAligned) {
        cairo_set_source_surface(cairo_.get(), place.contents.get(),
                                 static_cast<double>(place.originX + place.area.left),
                                 static_cast<double>(place.originY + place.area.top));
    } else {
        // From the store's pixels to the view's points, then to the image.
        const CGAffineTransform t = CGAffineTransform{1 / scale_,
                                                      0,
                                                      0,
                                                      1 / scale_,
                                                      static_cast<double>(place.area.left) / scale_,
                                                      static_cast<double>(place.area.top) / scale_}
                                        .concat(place.toImage);
        const cairo_matrix_t matrix{t.a, t.b, t.c, t.d, t.tx, t.ty};
        cairo_set_matrix(cairo_.get(), &matrix);
        cairo_set_source_surface(cairo_.get(), place.contents.get(), 0, 0);
        cairo_pattern_set_filter(cairo_get_source(cairo_.get()), CAIRO_FILTER_BILINEAR);
        cairo_identity_matrix(cairo_.get());
    }
    if (alpha < 1) {
        cairo_paint_with_alpha(cairo_.get(), alpha);
    } else {
        cairo_paint(cairo_.get());
    }
}

}  // namespace orvane::platform
