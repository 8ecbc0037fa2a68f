#include "platform/raster/ShapeCoverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/coregraphics/Outline.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/raster/places.h"
#include "platform/raster/sensibleStroke.h"

namespace orvane::platform {

namespace {

using Outline = CGPath::Outline;

// More distant shapes are not drawn: doubles cannot represent fractions of a pixel there.
constexpr double kFarthest = 1e12;
// Small curved shapes, of which pictures contain many equal ones, are placed on a coarser grid, so
// that at most 256 masks serve all equal shapes. An offset of 1/32 pixel is invisible.
constexpr double kSharedPlacesPerPixel = 16;
constexpr double kSharedExtent = 128;
// Thinner strokes, in pixels, are not drawn.
constexpr double kThinnestPen = 1.0 / 1024;

enum PlainKind : std::uint32_t { kNotPlain, kPlainRect, kPlainEllipse, kPlainRoundedRect };

// Whether the axes are mapped to axes, with tolerance for the rounding of rotations by right
// angles.
bool keepsAxes(const CGAffineTransform& t) {
    const double tolerance = t.norm() * 1e-12;
    return (std::abs(t.b) <= tolerance && std::abs(t.c) <= tolerance) ||
           (std::abs(t.a) <= tolerance && std::abs(t.d) <= tolerance);
}

// The half extents, in pixels, of a round pen of this half width. They also apply to other pens if
// the axes are mapped to axes.
CGPoint penExtent(const CGAffineTransform& pen, double half) {
    return {half * std::hypot(pen.a, pen.c), half * std::hypot(pen.b, pen.d)};
}

// The largest distance of joins from the outline, in half widths: miters of any angle up to the
// miter limit. Curved shapes have round joins, and the butt caps of a single line add nothing.
double joinReach(const Outline& outline) {
    if (outline.isSmooth()) {
        return 1;
    }
    if (const auto* segments = std::get_if<Segments>(&outline.form)) {
        const bool isLine = segments->verbs.size() == 2 && segments->points.size() == 2;
        return isLine ? 1 : 10;
    }
    return 10;
}

// The shape that the solid stroke of a rectangle covers: the rectangle widened by half the width,
// or the frame between it and the narrowed rectangle.
Segments strokedRect(const CGRect& rect, double width) {
    const double half = width / 2;
    Segments result;
    emitRect(result, {{rect.origin.x - half, rect.origin.y - half},
                      {rect.size.width + width, rect.size.height + width}});
    if (rect.size.width > width && rect.size.height > width) {
        emitRect(result, {{rect.origin.x + half, rect.origin.y + half},
                          {rect.size.width - width, rect.size.height - width}});
    }
    return result;
}

int toBitmap(std::int64_t pixel) {
    constexpr std::int64_t kReach = 1 << 24;
    return static_cast<int>(std::clamp(pixel, -kReach, kReach));
}

}  // namespace

ShapeCoverage::ShapeCoverage(const std::shared_ptr<const Outline>& outline,
                             const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                             Coverage coverage, const StrokeStyle& stroke, bool isLasting) {
    if (outline->isEmpty() || !outline->isFinite() || !toPixels.isDrawable()) {
        return;
    }
    StrokeStyle style;
    if (coverage == Coverage::Stroke) {
        if (!pen.isDrawable() || !(stroke.width * pen.norm() >= kThinnestPen)) {
            return;
        }
        style = sensibleStroke(stroke, pen);
    }
    if (!makeBox(*outline, toPixels, pen, coverage, style)) {
        makeMasked(outline, toPixels, pen, coverage, style, isLasting);
    }
}

bool ShapeCoverage::makeBox(const Outline& outline, const CGAffineTransform& toPixels,
                            const CGAffineTransform& pen, Coverage coverage,
                            const StrokeStyle& stroke) {
    const bool isStroke = coverage == Coverage::Stroke;
    if (!keepsAxes(toPixels) ||
        (isStroke && (!keepsAxes(pen) || !stroke.dash.empty() || stroke.opacity != 1))) {
        return false;
    }
    const CGPoint half = isStroke ? penExtent(pen, stroke.width / 2) : CGPoint{};
    if (const auto* rect = std::get_if<Outline::Rect>(&outline.form)) {
        const auto [origin, size] = rect->rect;
        const CGPoint p = toPixels.apply(origin);
        const CGPoint q = toPixels.apply(CGPoint{origin.x + size.width, origin.y + size.height});
        const CGPoint min{std::min(p.x, q.x), std::min(p.y, q.y)};
        const CGPoint max{std::max(p.x, q.x), std::max(p.y, q.y)};
        AlignedBox box({min.x - half.x, min.y - half.y}, {max.x + half.x, max.y + half.y});
        if (isStroke && max.x - min.x > 2 * half.x && max.y - min.y > 2 * half.y) {
            box.setHole({min.x + half.x, min.y + half.y}, {max.x - half.x, max.y - half.y});
        }
        bounds_ = box.bounds();
        form_ = box;
        return true;
    }
    const auto* segments = std::get_if<Segments>(&outline.form);
    if (!isStroke || segments == nullptr || segments->verbs.size() != 2 ||
        segments->verbs[1] != Segments::Verb::Line) {
        return false;
    }
    const CGPoint p = toPixels.apply(segments->points[0]);
    const CGPoint q = toPixels.apply(segments->points[1]);
    if (p.x == q.x) {
        form_ = AlignedBox({p.x - half.x, p.y}, {q.x + half.x, q.y});
    } else if (p.y == q.y) {
        form_ = AlignedBox({p.x, p.y - half.y}, {q.x, q.y + half.y});
    } else {
        return false;
    }
    bounds_ = std::get<AlignedBox>(form_).bounds();
    return true;
}

void ShapeCoverage::makeMasked(const std::shared_ptr<const Outline>& outline,
                               const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                               Coverage coverage, const StrokeStyle& stroke, bool isLasting) {
    Masked masked{};
    MaskKey::Numbers& key = masked.key;
    CGRect box = outline->controlBox();
    CGPoint origin;
    if (const auto* rounded = std::get_if<Outline::RoundedRect>(&outline->form)) {
        key.kind = kPlainRoundedRect;
        key.cornerWidth = rounded->corner.width;
        key.cornerHeight = rounded->corner.height;
    } else if (std::holds_alternative<Outline::Ellipse>(outline->form)) {
        key.kind = kPlainEllipse;
    } else if (std::holds_alternative<Outline::Rect>(outline->form)) {
        key.kind = kPlainRect;
    } else {
        masked.outline = outline;
    }
    if (key.kind != kNotPlain) {
        key.width = box.size.width;
        key.height = box.size.height;
        origin = box.origin;
        box.origin = {};
    }

    // The box around the outline, relative to its origin.
    const CGAffineTransform linear = toPixels.linear();
    const CGRect extent = linear.apply(box);
    const CGPoint min = extent.origin;
    const CGPoint max{min.x + extent.size.width, min.y + extent.size.height};
    CGPoint reach;
    if (coverage == Coverage::Stroke) {
        masked.pen = pen.linear();
        // The corners of a solid rectangle are as far away as the extents of its pen.
        const bool isFrame = key.kind == kPlainRect && stroke.dash.empty() && masked.pen == linear;
        reach = isFrame ? CGPoint{stroke.width / 2 * (std::abs(pen.a) + std::abs(pen.c)),
                                  stroke.width / 2 * (std::abs(pen.b) + std::abs(pen.d))}
                        : penExtent(pen, stroke.width / 2 * joinReach(*outline));
        // Keys contain only one transformation, so the pen must be equal to it.
        isLasting = isLasting && masked.pen == linear;
        key.lineWidth = stroke.width;
        key.dashPhase = stroke.dashPhase;
        key.opacity = stroke.opacity;
        masked.dash = stroke.dash;
        masked.reach = std::max(reach.x, reach.y);
    }

    const CGPoint place = toPixels.apply(origin);
    // A sum, because it is NaN if one of its terms is.
    const double farthest = std::abs(place.x) + std::abs(place.y) + std::abs(min.x) +
                            std::abs(max.x) + std::abs(min.y) + std::abs(max.y);
    if (!(farthest < kFarthest)) {
        return;
    }
    const bool isShared = (key.kind == kPlainEllipse || key.kind == kPlainRoundedRect) &&
                          max.x - min.x <= kSharedExtent && max.y - min.y <= kSharedExtent;
    const double places = isShared ? kSharedPlacesPerPixel : kPlacesPerPixel;
    const double placedX = roundedTo(places, place.x);
    const double placedY = roundedTo(places, place.y);
    masked.originX = static_cast<std::int64_t>(std::floor(placedX));
    masked.originY = static_cast<std::int64_t>(std::floor(placedY));
    key.coverage = coverage;
    key.transform = linear;
    key.transform.tx = placedX - std::floor(placedX);
    key.transform.ty = placedY - std::floor(placedY);

    // Cairo rounds to 1/256 of a pixel. A miter magnifies this.
    const double rounding = coverage == Coverage::Stroke ? joinReach(*outline) / 64 : 1.0 / 128;
    const auto floorOf = [](double v) { return static_cast<std::int64_t>(std::floor(v)); };
    masked.left = floorOf(min.x + key.transform.tx - reach.x - rounding);
    masked.top = floorOf(min.y + key.transform.ty - reach.y - rounding);
    masked.right = floorOf(max.x + key.transform.tx + reach.x + rounding) + 1;
    masked.bottom = floorOf(max.y + key.transform.ty + reach.y + rounding) + 1;
    key.left = masked.left;
    key.top = masked.top;
    masked.isLasting = isLasting;
    bounds_ = {toBitmap(masked.originX + masked.left), toBitmap(masked.originY + masked.top),
               toBitmap(masked.originX + masked.right), toBitmap(masked.originY + masked.bottom)};
    form_ = std::move(masked);
}

PixelRect ShapeCoverage::covered() const {
    const auto* box = std::get_if<AlignedBox>(&form_);
    return box != nullptr ? box->covered() : PixelRect{};
}

bool ShapeCoverage::isExactBox() const {
    const auto* box = std::get_if<AlignedBox>(&form_);
    return box != nullptr && box->isExact();
}

std::optional<Mask> ShapeCoverage::rasterize(const Masked& masked, const MaskKey::Numbers& key) {
    // Plain shapes are rasterized from their key alone, so that the mask does not depend on the
    // first user.
    const CGRect rect{{}, {key.width, key.height}};
    Coverage coverage = key.coverage;
    Outline plain;
    if (key.kind == kPlainRect) {
        // Filling the frame is exact for rectangles of any thinness, and stroking is not.
        if (coverage == Coverage::Stroke && masked.dash.empty() &&
            masked.pen == key.transform.linear()) {
            plain.form = strokedRect(rect, key.lineWidth);
            coverage = Coverage::EOFill;
        } else {
            plain.form = Outline::Rect{rect};
        }
    } else if (key.kind == kPlainEllipse) {
        plain.form = Outline::Ellipse{rect};
    } else if (key.kind == kPlainRoundedRect) {
        plain.form = Outline::RoundedRect{rect, {key.cornerWidth, key.cornerHeight}};
    }
    CGAffineTransform transform = key.transform;
    transform.tx -= static_cast<double>(key.left);
    transform.ty -= static_cast<double>(key.top);
    const auto side = [&](std::int64_t extent) {
        return masked.isTiled() ? Mask::kSide : static_cast<int>(extent);
    };
    return MaskCache::forThisThread().rasterizer().rasterize(
        {masked.outline ? *masked.outline : plain, transform, masked.pen, coverage,
         StrokeStyle{key.lineWidth, key.dashPhase, masked.dash, key.opacity},
         side(masked.right - masked.left), side(masked.bottom - masked.top), masked.reach,
         masked.isTiled()});
}

// Calls `visit` with each mask that meets the area, the position of its corner, and the common
// part.
template <typename Visit>
void ShapeCoverage::forEachTile(const PixelRect& area, Visit visit) const {
    const Masked& masked = std::get<Masked>(form_);
    MaskCache& cache = MaskCache::forThisThread();
    const auto visitMask = [&](const MaskKey::Numbers& key, const PixelRect& place) {
        const PixelRect piece = area.intersected(place);
        const Mask* mask =
            masked.isLasting ? cache.find({masked.outline.get(), masked.dash, key}) : nullptr;
        if (mask != nullptr) {
            visit(*mask, place.left, place.top, piece);
            return;
        }
        std::optional<Mask> made = rasterize(masked, key);
        if (!made || !masked.isLasting) {
            // A mask that could not be made covers nothing and is not kept.
            visit(made ? *made : Mask(place.height()), place.left, place.top, piece);
            return;
        }
        visit(cache.insert({masked.outline, {masked.dash.begin(), masked.dash.end()}, key},
                           std::move(*made)),
              place.left, place.top, piece);
    };
    if (!masked.isTiled()) {
        visitMask(masked.key, bounds_);
        return;
    }
    const auto firstTile = [](std::int64_t pixel) {
        return floorDivide<std::int64_t>(pixel, Mask::kSide);
    };
    const std::int64_t left = firstTile(area.left - masked.originX);
    const std::int64_t top = firstTile(area.top - masked.originY);
    const std::int64_t right = firstTile(area.right - 1 - masked.originX);
    const std::int64_t bottom = firstTile(area.bottom - 1 - masked.originY);
    for (std::int64_t row = top; row <= bottom; ++row) {
        for (std::int64_t column = left; column <= right; ++column) {
            MaskKey::Numbers key = masked.key;
            key.left = column * Mask::kSide;
            key.top = row * Mask::kSide;
            const int x = static_cast<int>(masked.originX + key.left);
            const int y = static_cast<int>(masked.originY + key.top);
            visitMask(key, {x, y, x + Mask::kSide, y + Mask::kSide});
        }
    }
}

void ShapeCoverage::paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const {
    const PixelRect area = clip.intersected(bounds_);
    if (area.isEmpty()) {
        return;
    }
    if (const auto* box = std::get_if<AlignedBox>(&form_)) {
        box->paint(bitmap, area, color);
        return;
    }
    forEachTile(area, [&](const Mask& mask, int left, int top, const PixelRect& piece) {
        mask.paint(bitmap, left, top, piece, color);
    });
}

void ShapeCoverage::multiply(std::uint8_t* coverage, const PixelRect& area) const {
    if (const auto* box = std::get_if<AlignedBox>(&form_)) {
        box->multiply(coverage, area);
        return;
    }
    const PixelRect inside = area.intersected(bounds_);
    Mask::clearOutside(coverage, area, inside);
    if (inside.isEmpty()) {
        return;
    }
    forEachTile(inside, [&](const Mask& mask, int left, int top, const PixelRect& piece) {
        mask.multiply(coverage + (piece.top - area.top) * Mask::kSide + (piece.left - area.left),
                      left, top, piece);
    });
}

}  // namespace orvane::platform
