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

// The pixels of a view as textures of a fixed grid, so that a small repaint costs a small upload.
// Textures cannot be changed: a tile that was painted becomes a new one, all others stay as they
// are. Main thread only.
class GTKTiles {
public:
    // Takes over what was painted in `rects` (the view's pixels), or everything after the stored
    // area has moved. Null drops all.
    void update(const NSBackingStore* store, std::span<const NSBackingRect> rects);

    // Into the coordinates of the view, in points.
    void append(const Glib::RefPtr<Gtk::Snapshot>& snapshot) const;

private:
    struct Tile {
        NSBackingRect rect;  // what the texture covers
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
