#include "platform/gtk/map/readFromServer.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "orvane/network/ResponseCache.h"
#include "orvane/network/fetchCached.h"
#include "orvane/system/system.h"
#include "platform/map/NSMapTiles.h"

namespace orvane::platform {

namespace {

// The size of a cache, in bytes.
constexpr std::uintmax_t kCacheBytes = std::uintmax_t{200} << 20;

constexpr std::int32_t kNotFound = 404;
constexpr std::int32_t kGone = 410;

std::string replaced(std::string text, std::string_view part, int number) {
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part)) {
        text.replace(at, part.size(), std::to_string(number));
    }
    return text;
}

TileLoader::Result resultOf(const network::Fetched& fetched) {
    if (!fetched.body) {
        // A server has not every tile.
        const bool isMissing = fetched.status == kNotFound || fetched.status == kGone;
        return {nullptr, isMissing ? "" : fetched.error};
    }
    auto image = decodeTile(*fetched.body);
    std::string failure = fetched.error;
    if (!image && !fetched.body->empty() && failure.empty()) {
        failure = "the server has sent something that is no picture, or is too large";
    }
    return {std::move(image), std::move(failure)};
}

}  // namespace

TileLoader::Read readFromServer(const NSMapTiles& tiles) {
    const std::string folder =
        tiles.cacheFolder.empty() ? system::getCachesDirectory() + "/map" : tiles.cacheFolder;
    return [address = tiles.location,
            cache = std::make_shared<network::ResponseCache>(folder, kCacheBytes)](
               const NSMapTile& tile, const TileLoader::Done& done) {
        const std::string filled =
            replaced(replaced(replaced(address, "{z}", tile.zoom), "{x}", tile.x), "{y}", tile.y);
        network::fetchCached(cache, filled,
                             [done](const network::Fetched& fetched) { done(resultOf(fetched)); });
    };
}

}  // namespace orvane::platform
