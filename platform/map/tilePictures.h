#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <tuple>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGImage;

// The number of a tile: x counts to the east and y to the south, each below 2^zoom.
struct NSMapTile {
    int zoom = 0;
    int x = 0;
    int y = 0;

    friend constexpr bool operator<(const NSMapTile& a, const NSMapTile& b) {
        return std::tie(a.zoom, a.x, a.y) < std::tie(b.zoom, b.x, b.y);
    }
};

// A tile has no more bytes, and its picture no longer side in pixels.
constexpr std::size_t kMostTileBytes = std::size_t{4} << 20;
constexpr int kLongestTileSide = 2048;

// Decodes the picture of a tile: PNG, JPEG or WebP. Returns null for anything else, and beyond the
// limits. Tiles are decoded one at a time: a hostile one claims the memory of one bitmap at most.
// Any thread.
ORVANE_EXPORT std::shared_ptr<const CGImage> decodeTile(std::span<const unsigned char> bytes);

// The result of reading a tile.
struct NSMapTilePicture {
    std::shared_ptr<const CGImage> image;  // null without a picture
    bool isDamaged = false;                // there is a tile, but no picture in it
};

// Reads a tile from a folder; see NSMapTiles. Any thread.
ORVANE_EXPORT NSMapTilePicture readTileFile(const std::string& folder, const NSMapTile& tile);

}  // namespace orvane::platform
