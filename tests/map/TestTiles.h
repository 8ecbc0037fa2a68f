#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/coregraphics/CGImage.h"
#include "platform/map/tilePictures.h"

namespace orvane::tests {

// The color of a test's tile, 0x00RRGGBB: each tile of the first levels has its own.
inline std::uint32_t tileColor(const platform::NSMapTile& tile) {
    const auto part = [](int number, int factor) {
        return static_cast<std::uint32_t>((number * factor + 40) % 256);
    };
    return part(tile.x, 50) << 16 | part(tile.y, 70) << 8 | part(tile.zoom, 60);
}

// Writes a tile of one color.
inline void writeTile(const platform::NSMapTile& tile, const std::filesystem::path& file) {
    constexpr int kSide = 64;
    std::filesystem::create_directories(file.parent_path());
    const std::vector<std::uint32_t> pixels(kSide * kSide, 0xFF000000 | tileColor(tile));
    platform::CGImage::createWithPixels(kSide, kSide, pixels)->writePNG(file);
}

// Writes all tiles of the levels up to `zoom` into a folder.
inline void writeTiles(const std::filesystem::path& folder, int zoom) {
    for (platform::NSMapTile tile; tile.zoom <= zoom; ++tile.zoom) {
        for (tile.x = 0; tile.x < 1 << tile.zoom; ++tile.x) {
            for (tile.y = 0; tile.y < 1 << tile.zoom; ++tile.y) {
                writeTile(tile, folder / std::to_string(tile.zoom) / std::to_string(tile.x) /
                                    (std::to_string(tile.y) + ".png"));
            }
        }
    }
}

}  // namespace orvane::tests
