#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "platform/map/tilePictures.h"

namespace orvane::platform {

struct NSMapTiles;

// Loads the pictures of tiles from a server, a folder or a file, some at a time. Main thread only;
// what blocks runs on background threads.
class TileLoader final : public std::enable_shared_from_this<TileLoader> {
public:
    struct Result {
        std::shared_ptr<const CGImage> image = {};  // null for a tile that there is not
        // Why tiles cannot be loaded at all; empty otherwise.
        std::string failure = {};
    };
    using Done = std::function<void(const Result&)>;
    // Loads one tile. Called on a background thread; calls `done` once, on any thread.
    using Read = std::function<void(const NSMapTile& tile, const Done& done)>;

    // Loads at most so many tiles at the same time.
    TileLoader(Read read, std::size_t mostAtATime)
        : read_(std::move(read)), mostAtATime_(mostAtATime) {}

    // Returns the loader for a source of tiles; null for tiles from nowhere.
    static std::shared_ptr<TileLoader> create(const NSMapTiles& tiles);

    // Loads a tile, and calls `done` once on the main thread, never before this function returned.
    // `isWanted` is called on the main thread when it is the tile's turn.
    void load(const NSMapTile& tile, std::function<bool()> isWanted, Done done);

private:
    struct Waiting {
        NSMapTile tile;
        std::function<bool()> isWanted;
        Done done;
    };

    void loadNext();
    void begin(const Waiting& next);

    const Read read_;
    const std::size_t mostAtATime_;
    std::deque<Waiting> waiting_;
    std::size_t running_ = 0;
};

}  // namespace orvane::platform
