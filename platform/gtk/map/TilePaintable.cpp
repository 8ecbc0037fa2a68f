#include "platform/gtk/map/TilePaintable.h"

#include <gtk/gtk.h>

#include "platform/coregraphics/CGImage.h"

namespace orvane::platform {

namespace {

// How far a tile reaches over its neighbors to the right and below, in its points.
constexpr double kOverlap = 0.5;

struct TilePaintable {
    GObject parent;
    GdkTexture* texture;  // owned
};

GObjectClass* parentClass = nullptr;

GdkTexture* textureOf(const std::shared_ptr<const CGImage>& image) {
    using Owner = std::shared_ptr<const CGImage>;
    const auto pixels = image->pixels();
    GBytes* const bytes = g_bytes_new_with_free_func(
        pixels.data(), pixels.size_bytes(),
        [](gpointer owner) { delete static_cast<Owner*>(owner); }, new Owner(image));
    // Words of premultiplied alpha, red, green and blue.
    GdkTexture* const texture =
        gdk_memory_texture_new(image->width(), image->height(), GDK_MEMORY_DEFAULT, bytes,
                               static_cast<gsize>(image->width()) * sizeof(std::uint32_t));
    g_bytes_unref(bytes);
    return texture;
}

GdkTexture* textureIn(void* paintable) {
    return static_cast<TilePaintable*>(paintable)->texture;
}

void draw(GdkPaintable* self, GdkSnapshot* snapshot, double width, double height) {
    gdk_paintable_snapshot(GDK_PAINTABLE(textureIn(self)), snapshot, width + kOverlap,
                           height + kOverlap);
}

void finalize(GObject* object) {
    g_object_unref(textureIn(object));
    parentClass->finalize(object);
}

void initializeClass(gpointer classPointer, gpointer) {
    parentClass = static_cast<GObjectClass*>(g_type_class_peek_parent(classPointer));
    static_cast<GObjectClass*>(classPointer)->finalize = finalize;
}

void initializeInterface(gpointer interfacePointer, gpointer) {
    auto* const paintable = static_cast<GdkPaintableInterface*>(interfacePointer);
    paintable->snapshot = draw;
    paintable->get_intrinsic_width = [](GdkPaintable* self) {
        return gdk_texture_get_width(textureIn(self));
    };
    paintable->get_intrinsic_height = [](GdkPaintable* self) {
        return gdk_texture_get_height(textureIn(self));
    };
}

GType registerType() {
    const GType type = g_type_register_static_simple(G_TYPE_OBJECT, "OrvaneTilePaintable",
                                                     sizeof(GObjectClass), initializeClass,
                                                     sizeof(TilePaintable), nullptr, GTypeFlags{});
    const GInterfaceInfo interface { initializeInterface, nullptr, nullptr };
    g_type_add_interface_static(type, GDK_TYPE_PAINTABLE, &interface);
    return type;
}

}  // namespace

GdkPaintable* createTilePaintable(const std::shared_ptr<const CGImage>& image) {
    static const GType type = registerType();
    auto* const object = static_cast<GObject*>(g_object_new(type, nullptr));
    reinterpret_cast<TilePaintable*>(object)->texture = textureOf(image);
    return GDK_PAINTABLE(object);
}

}  // namespace orvane::platform
