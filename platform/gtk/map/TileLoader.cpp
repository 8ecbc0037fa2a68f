#include "platform/gtk/map/TileLoader.h"

#include <filesystem>
#include <system_error>

#include "platform/dispatch/dispatch.h"
#include "platform/gtk/map/MBTilesFile.h"
#include "platform/gtk/map/ServerLoader.h"

namespace orvane::platform {

namespace {

constexpr const char* kDamaged = "a tile is no picture in PNG, JPEG or WebP, or is too large";

TileLoader::Result resultOf(const NSMapTilePicture& picture) {
    return {picture.image, picture.isDamaged ? kDamaged : ""};
}

// Loads tiles with a function that blocks, and is called on background threads.
class BlockingLoader final : public TileLoader {
public:
    using Read = std::function<Result(const NSMapTile& tile)>;

    explicit BlockingLoader(Read read) : read_(std::move(read)) {}

    void load(const NSMapTile& tile, std::function<bool()>, Done done) override {
        dispatchBackgroundAsync([read = read_, tile, done = std::move(done)] {
            dispatchMainAsync([done, result = read(tile)] { done(result); });
        });
    }

private:
    Read read_;
};

}  // namespace

std::shared_ptr<TileLoader> TileLoader::create(const NSMapTiles& tiles) {
    switch (tiles.kind) {
        case NSMapTiles::Kind::None:
            return nullptr;
        case NSMapTiles::Kind::Server:
            return std::make_shared<ServerLoader>(tiles);
        case NSMapTiles::Kind::Folder:
            return std::make_shared<BlockingLoader>(
                [folder = tiles.location](const NSMapTile& tile) {
                    std::error_code error;
                    if (!std::filesystem::is_directory(folder, error)) {
                        return Result{nullptr, "there is no such folder"};
                    }
                    return resultOf(readTileFile(folder, tile));
                });
        case NSMapTiles::Kind::MBTiles:
            break;
    }
    // Opened by the first tile, in the background.
    return std::make_shared<BlockingLoader>(
        [file = std::make_shared<MBTilesFile>(tiles.location)](const NSMapTile& tile) {
            const MBTilesFile::Tile found = file->read(tile);
            if (!found.failure.empty() || found.bytes.empty()) {
                return Result{nullptr, found.failure};
            }
            auto image = decodeTile(found.bytes);
            return resultOf({image, !image});
        });
}

}  // namespace orvane::platform
