#pragma once

#include <gdkmm/texture.h>
#include <glibmm/refptr.h>
#include <gtkmm/snapshot.h>

#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

class NSBackingStore;

// The pixels of a view as textures, one for each tile of the backing store's grid, so that a small
// repaint uploads little. A texture cannot be changed: a tile that was painted gets a new one, and
// all others are kept. Main thread only.
class GTKTiles {
public:
    // Copies what was painted in `rects` (the view's pixels), or everything if the stored area
    // changed. A null store drops all textures.
    void update(const NSBackingStore* store, std::span<const NSBackingRect> rects);

    // Appends the textures, in the coordinates of the view, in points.
    void append(GtkSnapshot* snapshot) const;

private:
    struct Tile {
        NSBackingRect rect;  // what the texture covers, in the view's pixels
        std::uint64_t serial = 0;
        Glib::RefPtr<Gdk::Texture> texture;
    };
    using Place = std::pair<int, int>;  // row, column of the grid

    void updateRect(const NSBackingStore& store, const NSBackingRect& rect);
    void dropOutside(const NSBackingRect& area);

    std::map<Place, Tile> tiles_;
    NSBackingRect area_;
    double scale_ = 1;
};

}  // namespace orvane::platform
