#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/map/NSMapTiles.h"
#include "platform/map/tilePictures.h"

namespace orvane::platform {

// Loads the pictures of tiles from a server, a folder or a file. Main thread only; what blocks runs
// on background threads.
class TileLoader {
public:
    struct Result {
        std::shared_ptr<const CGImage> image = {};  // null for a tile that there is not
        // Why tiles cannot be loaded at all; empty otherwise.
        std::string failure = {};
    };
    using Done = std::function<void(const Result&)>;

    virtual ~TileLoader() = default;

    // Returns the loader for a source of tiles; null for tiles from nowhere.
    static std::shared_ptr<TileLoader> create(const NSMapTiles& tiles);

    // Loads a tile, and calls `done` once on the main thread, never before this function returned.
    // `isWanted` is called on the main thread before work that can be spared.
    virtual void load(const NSMapTile& tile, std::function<bool()> isWanted, Done done) = 0;
};

}  // namespace orvane::platform
