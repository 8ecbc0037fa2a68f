#pragma once

#include <cstddef>
#include <deque>
#include <memory>

#include "platform/gtk/map/TileLoader.h"

namespace orvane::network {
class ResponseCache;
}

namespace orvane::platform {

// Loads tiles from a server, some at a time, by way of a cache on the disk. Main thread only.
class ServerLoader final : public TileLoader, public std::enable_shared_from_this<ServerLoader> {
public:
    explicit ServerLoader(const NSMapTiles& tiles);
    ~ServerLoader() override;

    void load(const NSMapTile& tile, std::function<bool()> isWanted, Done done) override;

private:
    struct Waiting {
        NSMapTile tile;
        std::function<bool()> isWanted;
        Done done;
    };

    std::string addressOf(const NSMapTile& tile) const;
    void loadNext();
    void begin(const Waiting& next);

    const std::string address_;
    std::shared_ptr<network::ResponseCache> cache_;
    std::deque<Waiting> waiting_;
    std::size_t running_ = 0;
};

}  // namespace orvane::platform
