#pragma once

#include <gdk/gdk.h>

#include <memory>

namespace orvane::platform {

class CGImage;

// Creates what draws the picture of a tile, which it shares. It is drawn a little larger than the
// tile: edges between pixels are smoothed, and the ground would shine through between neighbors.
// Returns a reference that the caller owns.
GdkPaintable* createTilePaintable(const std::shared_ptr<const CGImage>& image);

}  // namespace orvane::platform
