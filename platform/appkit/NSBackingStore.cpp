#include "platform/appkit/NSBackingStore.h"

#include <algorithm>
#include <utility>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/raster/CGBitmapContext.h"

namespace orvane::platform {

namespace {

std::uint64_t nextSerial() {
    static std::uint64_t last = 0;
    return ++last;
}

NSBackingRect tileRect(std::int64_t column, std::int64_t line) {
    constexpr std::int64_t size = NSBackingStore::kTileSize;
    return {column * size, line * size, (column + 1) * size, (line + 1) * size};
}

}  // namespace

NSBackingStore::NSBackingStore(double scale) : scale_(scale) {}
NSBackingStore::~NSBackingStore() = default;

NSBackingRect NSBackingStore::tilesAround(const NSBackingRect& rect) {
    constexpr std::int64_t size = kTileSize;
    if (rect.isEmpty()) {
        return {};
    }
    return {floorDivide(rect.left, size), floorDivide(rect.top, size),
            floorDivide(rect.right - 1, size) + 1, floorDivide(rect.bottom - 1, size) + 1};
}

std::uint32_t* NSBackingStore::row(std::int64_t y) const {
    return pixels_.data() + (y - area_.top) * area_.width();
}

std::uint64_t& NSBackingStore::serialAt(std::int64_t column, std::int64_t line) {
    return serials_[static_cast<std::size_t>((line - grid_.top) * grid_.width() +
                                             (column - grid_.left))];
}

// Every pixel that stays inside keeps its place in memory, if the width stays the same.
bool NSBackingStore::movePixels(const NSBackingRect& area) {
    return area.width() == area_.width() && !area.intersection(area_).isEmpty() &&
           pixels_.slide((area.top - area_.top) * area.width() + (area.left - area_.left),
                         static_cast<std::size_t>(area.area()));
}

// Returns false, and stores nothing, if there is not enough memory.
bool NSBackingStore::copyPixels(const NSBackingRect& area) {
    MovablePixels pixels;
    if (!area.isEmpty() && !pixels.allocate(static_cast<std::size_t>(area.area()))) {
        pixels_ = {};
        return false;
    }
    const NSBackingRect kept = area.intersection(area_);
    for (std::int64_t y = kept.top; y < kept.bottom && !kept.isEmpty(); ++y) {
        std::copy_n(row(y) + (kept.left - area_.left), kept.width(),
                    pixels.data() + (y - area.top) * area.width() + (kept.left - area.left));
    }
    pixels_ = std::move(pixels);
    return true;
}

bool NSBackingStore::setArea(const NSBackingRect& area) {
    if (area == area_) {
        return true;
    }
    const NSBackingRect before = area_;
    const bool isStored = movePixels(area) || copyPixels(area);
    area_ = isStored ? area : NSBackingRect{};
    damage_.setBounds(area_);
    keepSerials(before);
    canvas_.reset();
    if (area_.isEmpty()) {
        return isStored;
    }
    canvas_ = std::make_unique<CGBitmapContext>(pixels_.data(), static_cast<int>(area_.width()),
                                                static_cast<int>(area_.height()), bytesPerRow());
    const NSBackingRect kept = area_.intersection(before);
    if (kept.isEmpty()) {
        damage_.addAll();
        return true;
    }
    // The four bands around the kept part.
    damage_.add({area_.left, area_.top, area_.right, kept.top});
    damage_.add({area_.left, kept.bottom, area_.right, area_.bottom});
    damage_.add({area_.left, kept.top, kept.left, kept.bottom});
    damage_.add({kept.right, kept.top, area_.right, kept.bottom});
    return true;
}

// Takes over the serials of the tiles that were in the area before.
void NSBackingStore::keepSerials(const NSBackingRect& before) {
    const std::vector<std::uint64_t> old = std::exchange(serials_, {});
    const NSBackingRect oldGrid = std::exchange(grid_, tilesAround(area_));
    serials_.assign(static_cast<std::size_t>(grid_.area()), 0);
    const NSBackingRect kept = tilesAround(area_.intersection(before));
    for (std::int64_t line = kept.top; line < kept.bottom; ++line) {
        for (std::int64_t column = kept.left; column < kept.right; ++column) {
            // The extent of a tile at the edge of the area may have changed; its texture is stale.
            const NSBackingRect tile = tileRect(column, line);
            const std::uint64_t serial = old[static_cast<std::size_t>(
                (line - oldGrid.top) * oldGrid.width() + (column - oldGrid.left))];
            const bool same = tile.intersection(area_) == tile.intersection(before);
            serialAt(column, line) = same || serial == 0 ? serial : nextSerial();
        }
    }
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
    const CGSavedState state(*canvas_);
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
