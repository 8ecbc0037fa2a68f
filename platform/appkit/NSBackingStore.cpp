#include "platform/appkit/NSBackingStore.h"

#include <algorithm>
#include <new>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/raster/CGBitmapContext.h"

namespace orvane::platform {

namespace {

std::uint64_t nextSerial() {
    static std::uint64_t last = 0;
    return ++last;
}

NSBackingRect tileRect(std::int64_t column, std::int64_t line) {
    constexpr std::int64_t size = NSBackingStore::tileSize;
    return {column * size, line * size, (column + 1) * size, (line + 1) * size};
}

// Saves the graphics state and restores it at the end of the scope.
class SavedState {
public:
    explicit SavedState(CGContext& canvas) : canvas_(canvas) { canvas_.saveGState(); }
    ~SavedState() { canvas_.restoreGState(); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    CGContext& canvas_;
};

}  // namespace

NSBackingStore::NSBackingStore(double scale) : scale_(scale) {}
NSBackingStore::~NSBackingStore() = default;

NSBackingRect NSBackingStore::tilesAround(const NSBackingRect& rect) {
    constexpr std::int64_t size = tileSize;
    if (rect.isEmpty()) {
        return {};
    }
    return {floorDivide(rect.left, size), floorDivide(rect.top, size),
            floorDivide(rect.right - 1, size) + 1, floorDivide(rect.bottom - 1, size) + 1};
}

std::uint32_t* NSBackingStore::row(std::int64_t y) const {
    return pixels_.get() + static_cast<std::size_t>((y - area_.top) * area_.width());
}

std::uint64_t& NSBackingStore::serialAt(std::int64_t column, std::int64_t line) {
    return serials_[static_cast<std::size_t>((line - grid_.top) * grid_.width() +
                                             (column - grid_.left))];
}

bool NSBackingStore::setArea(const NSBackingRect& area) {
    if (area == area_) {
        return true;
    }
    NSBackingStore old(scale_);
    std::swap(old.area_, area_);
    std::swap(old.pixels_, pixels_);
    std::swap(old.grid_, grid_);
    std::swap(old.serials_, serials_);
    canvas_.reset();

    if (!area.isEmpty()) {
        const auto count = static_cast<std::size_t>(area.area());
        pixels_.reset(new (std::nothrow) std::uint32_t[count]());
    }
    area_ = pixels_ ? area : NSBackingRect{};
    damage_.setBounds(area_);
    grid_ = tilesAround(area_);
    serials_.assign(static_cast<std::size_t>(grid_.area()), 0);
    if (!pixels_) {
        return area.isEmpty();
    }
    canvas_ = std::make_unique<CGBitmapContext>(pixels_.get(), static_cast<int>(area_.width()),
                                                static_cast<int>(area_.height()), bytesPerRow());

    const NSBackingRect kept = area_.intersection(old.area_);
    if (kept.isEmpty()) {
        damage_.addAll();
        return true;
    }
    for (std::int64_t y = kept.top; y < kept.bottom; ++y) {
        std::copy_n(old.row(y) + (kept.left - old.area_.left), kept.width(),
                    row(y) + (kept.left - area_.left));
    }
    const NSBackingRect keptTiles = tilesAround(kept);
    for (std::int64_t line = keptTiles.top; line < keptTiles.bottom; ++line) {
        for (std::int64_t column = keptTiles.left; column < keptTiles.right; ++column) {
            // The extent of a tile at the edge of the area may have changed; its texture is stale.
            const NSBackingRect tile = tileRect(column, line);
            const std::uint64_t serial = old.serialAt(column, line);
            const bool same = tile.intersection(area_) == tile.intersection(old.area_);
            serialAt(column, line) = same || serial == 0 ? serial : nextSerial();
        }
    }
    // The four bands around the kept part.
    damage_.add({area_.left, area_.top, area_.right, kept.top});
    damage_.add({area_.left, kept.bottom, area_.right, area_.bottom});
    damage_.add({area_.left, kept.top, kept.left, kept.bottom});
    damage_.add({kept.right, kept.top, area_.right, kept.bottom});
    return true;
}

std::span<const NSBackingRect> NSBackingStore::paint(NSView& view) {
    damage_.take(painted_);
    for (const NSBackingRect& rect : painted_) {
        paintRect(view, rect);
        const NSBackingRect tiles = tilesAround(rect);
        for (std::int64_t line = tiles.top; line < tiles.bottom; ++line) {
            for (std::int64_t column = tiles.left; column < tiles.right; ++column) {
                serialAt(column, line) = nextSerial();
            }
        }
    }
    return painted_;
}

void NSBackingStore::paintRect(NSView& view, const NSBackingRect& rect) {
    for (std::int64_t y = rect.top; y < rect.bottom; ++y) {
        std::fill_n(row(y) + (rect.left - area_.left), rect.width(), 0U);
    }
    const SavedState state(*canvas_);
    // The clip is set in pixels, before the scale, so that it is exactly on pixel boundaries.
    canvas_->clipToRect(
        {{static_cast<double>(rect.left - area_.left), static_cast<double>(rect.top - area_.top)},
         {static_cast<double>(rect.width()), static_cast<double>(rect.height())}});
    canvas_->concatCTM(
        {scale_, 0, 0, scale_, static_cast<double>(-area_.left), static_cast<double>(-area_.top)});
    const NSGraphicsContext::Scope current(*canvas_);
    view.drawRect(rect.toPoints(scale_));
}

void NSBackingStore::forEachTile(const NSBackingRect& rect,
                                 const std::function<void(const Tile&)>& visit) const {
    const NSBackingRect tiles = tilesAround(rect.intersection(area_));
    for (std::int64_t line = tiles.top; line < tiles.bottom; ++line) {
        for (std::int64_t column = tiles.left; column < tiles.right; ++column) {
            const auto index = static_cast<std::size_t>((line - grid_.top) * grid_.width() +
                                                        (column - grid_.left));
            visit({tileRect(column, line).intersection(area_), serials_[index]});
        }
    }
}

}  // namespace orvane::platform
