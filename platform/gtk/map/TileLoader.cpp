#include "platform/gtk/map/TileLoader.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/gtk/map/MBTilesFile.h"
#include "platform/gtk/map/readFromServer.h"
#include "platform/map/NSMapTiles.h"
#include "platform/map/tilePictures.h"

namespace orvane::platform {

namespace {

// Pictures are decoded one at a time, while another one is read.
constexpr std::size_t kMostFiles = 2;
// As many requests to one server at a time as web browsers send.
constexpr std::size_t kMostRequests = 6;

constexpr const char* kDamaged = "a tile is no picture in PNG, JPEG or WebP, or is too large";

TileLoader::Result resultOf(const NSMapTilePicture& picture) {
    return {picture.image, picture.isDamaged ? kDamaged : ""};
}

TileLoader::Read readFromFolder(const std::string& folder) {
    return [folder](const NSMapTile& tile, const TileLoader::Done& done) {
        std::error_code error;
        if (std::filesystem::is_directory(folder, error)) {
            done(resultOf(readTileFile(folder, tile)));
        } else {
            done({nullptr, "there is no such folder"});
        }
    };
}

TileLoader::Read readFromDatabase(const std::string& path) {
    return [file = std::make_shared<MBTilesFile>(path)](const NSMapTile& tile,
                                                        const TileLoader::Done& done) {
        const MBTilesFile::Tile found = file->read(tile);
        if (!found.failure.empty() || found.bytes.empty()) {
            done({nullptr, found.failure});
        } else {
            const auto image = decodeTile(found.bytes);
            done(resultOf({image, !image}));
        }
    };
}

}  // namespace

std::shared_ptr<TileLoader> TileLoader::create(const NSMapTiles& tiles) {
    switch (tiles.kind) {
        case NSMapTiles::Kind::None:
            break;
        case NSMapTiles::Kind::Server:
            return std::make_shared<TileLoader>(readFromServer(tiles), kMostRequests);
        case NSMapTiles::Kind::Folder:
            return std::make_shared<TileLoader>(readFromFolder(tiles.location), kMostFiles);
        case NSMapTiles::Kind::MBTiles:
            return std::make_shared<TileLoader>(readFromDatabase(tiles.location), kMostFiles);
    }
    return nullptr;
}

void TileLoader::load(const NSMapTile& tile, std::function<bool()> isWanted, Done done) {
    waiting_.push_back({tile, std::move(isWanted), std::move(done)});
    dispatchMainAsync([self = shared_from_this()] { self->loadNext(); });
}

void TileLoader::loadNext() {
    while (running_ < mostAtATime_ && !waiting_.empty()) {
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        next.isWanted() ? begin(next) : next.done({});
    }
}

void TileLoader::begin(const Waiting& next) {
    ++running_;
    const Done finish = [self = shared_from_this(), done = next.done](const Result& result) {
        dispatchMainAsync([self, done, result] {
            --self->running_;
            self->loadNext();
            done(result);
        });
    };
    dispatchBackgroundAsync([read = read_, tile = next.tile, finish] { read(tile, finish); });
}

}  // namespace orvane::platform
