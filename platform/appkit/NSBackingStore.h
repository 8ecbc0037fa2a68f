#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSDamageRegion.h"
#include "platform/raster/MovablePixels.h"

namespace orvane::platform {

class CGBitmapContext;
class NSView;

// The pixels of one view, which persist between frames, and the damage that is still to be painted.
// Main thread only.
//
// Pixel coordinates are the view's: point x is at pixel x * scale. Only `area` is stored, a part of
// the view that its window chooses (NSBackingPolicy). When the area moves, pixels that stay inside
// are kept, and the rest is damaged. An area that keeps its width moves without copying pixels.
//
// A window that presents textures divides the area along a fixed grid of tiles. Each tile has the
// serial number of its last painting, so a texture is up to date while it has the tile's serial.
// Serials are unique within the process; a tile with serial 0 is transparent.
class ORVANE_EXPORT NSBackingStore {
public:
    static constexpr std::int64_t kTileSize = 256;

    struct Tile {
        NSBackingRect rect;    // in the view's pixels, within the area
        std::uint64_t serial;  // of the last painting; 0 if it was never painted
    };

    // `scale` is the number of pixels per point.
    explicit NSBackingStore(double scale);
    ~NSBackingStore();
    NSBackingStore(const NSBackingStore&) = delete;
    NSBackingStore& operator=(const NSBackingStore&) = delete;

    double scale() const { return scale_; }
    const NSBackingRect& area() const { return area_; }
    // Changes the stored part. Returns false, and stores nothing, if there is not enough memory.
    bool setArea(const NSBackingRect& area);

    // The damage that is still to be painted, clipped to the area.
    NSDamageRegion& damage() { return damage_; }
    bool needsPainting() const { return !damage_.isEmpty(); }
    // Clears each damaged rectangle, paints it with the view's drawRect, and clears the damage.
    // Returns the painted rectangles in the view's pixels; they are valid until the next call.
    std::span<const NSBackingRect> paint(NSView& view);

    // The pixels of the area: premultiplied ARGB, 32 bits in the machine's byte order. Null if the
    // area is empty. setArea() makes the pointer invalid.
    const std::uint32_t* pixels() const { return pixels_.data(); }
    std::size_t bytesPerRow() const {
        return static_cast<std::size_t>(area_.width()) * sizeof(std::uint32_t);
    }

    // Returns the columns and rows of tiles that meet `rect` (in the view's pixels).
    static NSBackingRect tilesAround(const NSBackingRect& rect);
    // Calls `visit` for each tile that meets `rect` (in the view's pixels), row by row.
    void forEachTile(const NSBackingRect& rect,
                     const std::function<void(const Tile&)>& visit) const;

private:
    bool movePixels(const NSBackingRect& area);
    bool copyPixels(const NSBackingRect& area);
    void keepSerials(const NSBackingRect& before);
    void paintRect(NSView& view, const NSBackingRect& rect);
    std::uint32_t* row(std::int64_t y) const;
    std::uint64_t& serialAt(std::int64_t column, std::int64_t line);

    double scale_;
    NSBackingRect area_;
    MovablePixels pixels_;
    std::unique_ptr<CGBitmapContext> canvas_;  // draws on pixels_
    NSDamageRegion damage_;
    std::vector<NSBackingRect> painted_;
    NSBackingRect grid_;                  // the columns and rows of tiles that meet the area
    std::vector<std::uint64_t> serials_;  // of the tiles of the grid, row by row
};

}  // namespace orvane::platform
