#include "platform/gtk/GTKTiles.h"

#include <gdkmm/memorytexture.h>
#include <glibmm/bytes.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "platform/appkit/NSBackingStore.h"
#include "platform/coregraphics/floorDivide.h"

namespace orvane::platform {

namespace {

// Adds a transparent pixel at the edges of the stored area, so that the GPU's filter smooths the
// outline of a rotated view.
NSBackingRect withMargin(const NSBackingRect& rect, const NSBackingRect& area) {
    return {rect.left - (rect.left == area.left ? 1 : 0), rect.top - (rect.top == area.top ? 1 : 0),
            rect.right + (rect.right == area.right ? 1 : 0),
            rect.bottom + (rect.bottom == area.bottom ? 1 : 0)};
}

// Memory for the pixels of one texture, zeroed. It is a mapping of its own: on the heap, the
// buffers of many short-lived tiles would leave gaps that are never returned to the system.
class Pixels {
public:
    explicit Pixels(std::size_t count)
        : size_(count * sizeof(std::uint32_t)),
          address_(
              mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (address_ == MAP_FAILED) {
            throw std::bad_alloc();
        }
    }
    ~Pixels() { munmap(address_, size_); }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;

    std::uint32_t* get() const { return static_cast<std::uint32_t*>(address_); }
    // The bytes own the pixels.
    static Glib::RefPtr<Glib::Bytes> toBytes(std::unique_ptr<Pixels> pixels) {
        Pixels* const owned = pixels.release();
        return Glib::wrap(g_bytes_new_with_free_func(
            owned->address_, owned->size_, [](void* data) { delete static_cast<Pixels*>(data); },
            owned));
    }

private:
    std::size_t size_;
    void* address_;
};

// Makes a texture of `rect`, which is the tile with its margin.
Glib::RefPtr<Gdk::Texture> makeTexture(const NSBackingStore& store, const NSBackingRect& tile,
                                       const NSBackingRect& rect) {
    const auto width = static_cast<std::size_t>(rect.width());
    const auto height = static_cast<std::size_t>(rect.height());
    const std::size_t stride = store.bytesPerRow() / sizeof(std::uint32_t);
    const std::uint32_t* source = store.pixels() +
                                  static_cast<std::size_t>(tile.top - store.area().top) * stride +
                                  static_cast<std::size_t>(tile.left - store.area().left);
    auto pixels = std::make_unique<Pixels>(width * height);
    std::uint32_t* target = pixels->get() + static_cast<std::size_t>(tile.top - rect.top) * width +
                            static_cast<std::size_t>(tile.left - rect.left);
    for (int row = 0; row < tile.height(); ++row, source += stride, target += width) {
        std::copy_n(source, tile.width(), target);
    }
    const auto bytes = Pixels::toBytes(std::move(pixels));
    // GTK's default format is the one of the store: premultiplied ARGB in the machine's byte order.
    return Gdk::MemoryTexture::create(rect.width(), rect.height(),
                                      static_cast<Gdk::MemoryTexture::Format>(GDK_MEMORY_DEFAULT),
                                      bytes, width * sizeof(std::uint32_t));
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
        const Place place{
            static_cast<int>(floorDivide(current.rect.top, NSBackingStore::kTileSize)),
            static_cast<int>(floorDivide(current.rect.left, NSBackingStore::kTileSize))};
        if (current.serial == 0) {
            tiles_.erase(place);
            return;
        }
        const NSBackingRect shown = withMargin(current.rect, area_);
        Tile& tile = tiles_[place];
        if (tile.serial != current.serial || tile.rect != shown) {
            tile = {shown, current.serial, makeTexture(store, current.rect, shown)};
        }
    });
}

void GTKTiles::dropOutside(const NSBackingRect& area) {
    std::erase_if(tiles_, [&](const auto& entry) { return !entry.second.rect.intersects(area); });
}

void GTKTiles::append(GtkSnapshot* snapshot) const {
    for (const auto& [place, tile] : tiles_) {
        const auto points = [this](int pixels) { return static_cast<float>(pixels / scale_); };
        const graphene_rect_t bounds = {{points(tile.rect.left), points(tile.rect.top)},
                                        {points(tile.rect.width()), points(tile.rect.height())}};
        gtk_snapshot_append_texture(snapshot, tile.texture->gobj(), &bounds);
    }
}

}  // namespace orvane::platform
