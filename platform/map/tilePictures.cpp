#include "platform/map/tilePictures.h"

#include <filesystem>
#include <mutex>
#include <system_error>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/imageio/CGImageSource.h"

namespace orvane::platform {

std::shared_ptr<const CGImage> decodeTile(std::span<const unsigned char> bytes) {
    const CGImageFormat format = formatOf(bytes);
    const bool isBitmap = format == CGImageFormat::PNG || format == CGImageFormat::JPEG ||
                          format == CGImageFormat::WebP;
    if (!isBitmap || bytes.size() > kMostTileBytes) {
        return nullptr;
    }
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    const auto provider = CGDataProvider::createWithData(
        commons::ByteArray::createFromArray(bytes.data(), bytes.size()));
    const std::shared_ptr<CGImageSource> source = CGImageSource::create(*provider);
    const std::shared_ptr<const CGImage> image = source ? source->image(1) : nullptr;
    const bool fits =
        image && image->width() <= kLongestTileSide && image->height() <= kLongestTileSide;
    return fits ? image : nullptr;
}

NSMapTilePicture readTileFile(const std::string& folder, const NSMapTile& tile) {
    const std::filesystem::path column = std::filesystem::path(folder) / std::to_string(tile.zoom) /
                                         std::to_string(tile.x) / std::to_string(tile.y);
    for (const char* const ending : {".png", ".jpg", ".jpeg", ".webp"}) {
        std::filesystem::path file = column;
        file += ending;
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (error) {
            continue;
        }
        const auto provider =
            size <= kMostTileBytes ? CGDataProvider::createWithFilename(file) : nullptr;
        auto image = provider ? decodeTile(provider->bytes()) : nullptr;
        return {image, !image};
    }
    return {};
}

}  // namespace orvane::platform
