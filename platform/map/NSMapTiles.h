#pragma once

#include <string>

namespace orvane::platform {

// Where the tiles of a map come from. Zoom levels are from 0 to kMostZoom.
struct NSMapTiles {
    enum class Kind {
        None,
        Server,   // an http or https address with "{z}", "{x}" and "{y}"
        Folder,   // a folder with files named zoom/x/y and .png, .jpg or .webp
        MBTiles,  // a file in the format MBTiles, with pictures
    };
    static constexpr int kMostZoom = 24;

    Kind kind = Kind::None;
    std::string location = {};
    // Who has made the map; shown in a corner.
    std::string attribution = {};
    int minimumZoom = 0;
    int maximumZoom = 19;
    // The edge of a tile, in points; its picture may have any number of pixels.
    int tileSize = 256;
    // Where the tiles of a server are kept.
    std::string cacheFolder = {};

    friend bool operator==(const NSMapTiles&, const NSMapTiles&) = default;
};

}  // namespace orvane::platform
