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

namespace orvane::platform {

class CGBitmapContext;
class NSView;

// The pixels of one view, kept between frames, and the damage that waits to be painted into them.
//
// Pixel coordinates are the view's: point x lies at pixel x * scale. Only `area` is stored: the
// part of the view that can be seen in its window. The window moves the area as the view moves;
// what stays inside keeps its pixels, what enters is damaged.
//
// A window that presents textures cuts the area along a fixed grid of tiles. Each tile carries the
// serial number of its last painting, so whoever holds a texture of a serial knows whether it is
// still good. Serials never repeat within the process, and a tile of serial 0 is transparent.
class ORVANE_EXPORT NSBackingStore {
public:
    static constexpr std::int64_t tileSize = 256;

    struct Tile {
        NSBackingRect rect;    // in the view's pixels, within the area
        std::uint64_t serial;  // of the last painting; 0 is never painted
    };

    // `scale` is pixels a point.
    explicit NSBackingStore(double scale);
    ~NSBackingStore();
    NSBackingStore(const NSBackingStore&) = delete;
    NSBackingStore& operator=(const NSBackingStore&) = delete;

    double scale() const { return scale_; }
    const NSBackingRect& area() const { return area_; }
    // Moves the stored part. False when there is no memory for it: nothing is stored then.
    bool setArea(const NSBackingRect& area);

    // Waiting damage, cut to the area.
    NSDamageRegion& damage() { return damage_; }
    bool needsPainting() const { return !damage_.isEmpty(); }
    // Clears and paints each damaged rectangle through the view's drawRect, and empties the damage.
    // The rectangles painted, in the view's pixels; valid until the next call.
    std::span<const NSBackingRect> paint(NSView& view);

    // The first pixel of the area: premultiplied ARGB, 32 bits in the machine's byte order, rows
    // `bytesPerRow` apart. Null when the area is empty.
    const std::uint32_t* pixels() const { return pixels_.get(); }
    std::size_t bytesPerRow() const {
        return static_cast<std::size_t>(area_.width()) * sizeof(std::uint32_t);
    }

    // Returns the columns and rows of tiles that meet `rect` (in the view's pixels).
    static NSBackingRect tilesAround(const NSBackingRect& rect);
    // The tiles that meet `rect` (the view's pixels), row by row.
    void forEachTile(const NSBackingRect& rect,
                     const std::function<void(const Tile&)>& visit) const;

private:
    void paintRect(NSView& view, const NSBackingRect& rect);
    std::uint32_t* row(std::int64_t y) const;
    std::uint64_t& serialAt(std::int64_t column, std::int64_t line);

    double scale_;
    NSBackingRect area_;
    std::unique_ptr<std::uint32_t[]> pixels_;
    std::unique_ptr<CGBitmapContext> canvas_;  // on pixels_
    NSDamageRegion damage_;
    std::vector<NSBackingRect> painted_;
    NSBackingRect grid_;                  // the columns and lines of tiles that meet the area
    std::vector<std::uint64_t> serials_;  // of the grid, line by line
};

}  // namespace orvane::platform
