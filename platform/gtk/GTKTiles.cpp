#include "platform/gtk/GTKTiles.h"

#include <gdkmm/memorytexture.h>
#include <glibmm/bytes.h>

#include <cstddef>
#include <cstring>
#include <vector>

#include "platform/appkit/NSBackingStore.h"

namespace orvane::platform {

namespace {

Glib::RefPtr<Gdk::Texture> makeTexture(const NSBackingStore& store, const NSBackingRect& rect) {
    const auto width = static_cast<std::size_t>(rect.width());
    const auto height = static_cast<std::size_t>(rect.height());
    const std::size_t rowSize = width * sizeof(std::uint32_t);
    const std::size_t stride = store.bytesPerRow() / sizeof(std::uint32_t);
    const std::uint32_t* row = store.pixels() +
                               static_cast<std::size_t>(rect.top - store.area().top) * stride +
                               static_cast<std::size_t>(rect.left - store.area().left);
    std::vector<std::uint32_t> pixels(width * height);
    for (std::size_t y = 0; y < height; ++y, row += stride) {
        std::memcpy(&pixels[y * width], row, rowSize);
    }
    const auto bytes = Glib::Bytes::create(pixels.data(), rowSize * height);
    // GTK's default format is premultiplied ARGB in the machine's byte order, as in the store.
    return Gdk::MemoryTexture::create(rect.width(), rect.height(),
                                      static_cast<Gdk::MemoryTexture::Format>(GDK_MEMORY_DEFAULT),
                                      bytes, rowSize);
}

constexpr int floorDivide(int value, int divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

}  // namespace

void GTKTiles::update(const NSBackingStore* store, std::span<const NSBackingRect> rects) {
    if (store == nullptr || store->area().isEmpty()) {
        tiles_.clear();
        area_ = {};
        return;
    }
    scale_ = store->scale();
    if (store->area() != area_) {
        area_ = store->area();
        dropOutside(area_);
        updateRect(*store, area_);
        return;
    }
    for (const NSBackingRect& rect : rects) {
        updateRect(*store, rect);
    }
}

void GTKTiles::updateRect(const NSBackingStore& store, const NSBackingRect& rect) {
    store.forEachTile(rect, [&](const NSBackingStore::Tile& current) {
        const Place place{floorDivide(current.rect.top, NSBackingStore::tileSize),
                          floorDivide(current.rect.left, NSBackingStore::tileSize)};
        if (current.serial == 0) {
            tiles_.erase(place);
            return;
        }
        Tile& tile = tiles_[place];
        if (tile.serial != current.serial || tile.rect != current.rect) {
            tile = {current.rect, current.serial, makeTexture(store, current.rect)};
        }
    });
}

void GTKTiles::dropOutside(const NSBackingRect& area) {
    std::erase_if(tiles_, [&](const auto& entry) { return !entry.second.rect.intersects(area); });
}

void GTKTiles::append(const Glib::RefPtr<Gtk::Snapshot>& snapshot) const {
    for (const auto& [place, tile] : tiles_) {
        const auto points = [this](int pixels) { return static_cast<float>(pixels / scale_); };
        const graphene_rect_t bounds = {{points(tile.rect.left), points(tile.rect.top)},
                                        {points(tile.rect.width()), points(tile.rect.height())}};
        snapshot->append_texture(tile.texture, &bounds);
    }
}

}  // namespace orvane::platform
