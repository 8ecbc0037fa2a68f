#include "platform/gtk/map/ServerLoader.h"

#include <string_view>
#include <utility>

#include "orvane/network/ResponseCache.h"
#include "orvane/network/fetchCached.h"
#include "orvane/system/system.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::platform {

namespace {

// The size of the cache of all maps with the same folder.
constexpr std::uintmax_t kCacheBytes = std::uintmax_t{200} << 20;
// As many requests to one server at a time as web browsers send.
constexpr std::size_t kMostRequests = 6;

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

ServerLoader::ServerLoader(const NSMapTiles& tiles)
    : address_(tiles.location),
      cache_(std::make_shared<network::ResponseCache>(
          tiles.cacheFolder.empty() ? system::getCachesDirectory() + "/map" : tiles.cacheFolder,
          kCacheBytes)) {}

ServerLoader::~ServerLoader() = default;

std::string ServerLoader::addressOf(const NSMapTile& tile) const {
    return replaced(replaced(replaced(address_, "{z}", tile.zoom), "{x}", tile.x), "{y}", tile.y);
}

void ServerLoader::load(const NSMapTile& tile, std::function<bool()> isWanted, Done done) {
    waiting_.push_back({tile, std::move(isWanted), std::move(done)});
    dispatchMainAsync([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->loadNext();
        }
    });
}

void ServerLoader::loadNext() {
    while (running_ < kMostRequests && !waiting_.empty()) {
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        next.isWanted() ? begin(next) : next.done({});
    }
}

void ServerLoader::begin(const Waiting& next) {
    ++running_;
    // The disk is read in the background, too.
    dispatchBackgroundAsync([cache = cache_, address = addressOf(next.tile), done = next.done,
                             weak = weak_from_this()] {
        network::fetchCached(cache, address, [done, weak](const network::Fetched& fetched) {
            dispatchMainAsync([done, weak, result = resultOf(fetched)] {
                if (const auto self = weak.lock()) {
                    --self->running_;
                    self->loadNext();
                }
                done(result);
            });
        });
    });
}

}  // namespace orvane::platform
