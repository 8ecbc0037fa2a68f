#include "platform/gtk/map/TileSource.h"

#include <gtk/gtk.h>

#include <utility>

#include "platform/gtk/map/TileLoader.h"
#include "platform/gtk/map/TilePaintable.h"
#include "platform/map/NSMapTiles.h"

namespace orvane::platform {

namespace {

// A source of tiles of our own. Those of libshumate decode pictures of any size, cannot use another
// cache folder, and do not report that a server is away.
struct TileSource {
    struct State {
        std::shared_ptr<TileLoader> loader;
        std::function<void(const std::string&)> failed;
    };

    ShumateMapSource parent;
    State* state;  // owned
};

GObjectClass* parentClass = nullptr;

void fillTile(ShumateMapSource* source, ShumateTile* tile, GCancellable* cancellable,
              GAsyncReadyCallback callback, gpointer userData) {
    TileSource::State& state = *reinterpret_cast<TileSource*>(source)->state;
    GTask* const created = g_task_new(source, cancellable, callback, userData);
    // The task keeps the tile and the source.
    g_task_set_task_data(created, g_object_ref(tile), g_object_unref);
    const std::shared_ptr<GTask> task(created, g_object_unref);
    const NSMapTile number{static_cast<int>(shumate_tile_get_zoom_level(tile)),
                           static_cast<int>(shumate_tile_get_x(tile)),
                           static_cast<int>(shumate_tile_get_y(tile))};
    const auto isWanted = [task] {
        return g_cancellable_is_cancelled(g_task_get_cancellable(task.get())) == FALSE;
    };
    state.loader->load(number, isWanted, [task](const TileLoader::Result& result) {
        auto* const filled = SHUMATE_TILE(g_task_get_task_data(task.get()));
        auto* const self = reinterpret_cast<TileSource*>(g_task_get_source_object(task.get()));
        if (g_task_return_error_if_cancelled(task.get()) != FALSE) {
            return;
        }
        if (result.image) {
            GdkPaintable* const paintable = createTilePaintable(result.image);
            shumate_tile_set_paintable(filled, paintable);
            g_object_unref(paintable);
        }
        shumate_tile_set_state(filled, SHUMATE_STATE_DONE);
        if (!result.failure.empty()) {
            const auto failed = self->state->failed;
            failed(result.failure);
        }
        g_task_return_boolean(task.get(), TRUE);
    });
}

gboolean finishTile(ShumateMapSource*, GAsyncResult* result, GError** error) {
    return g_task_propagate_boolean(G_TASK(result), error);
}

void finalize(GObject* object) {
    delete reinterpret_cast<TileSource*>(object)->state;
    parentClass->finalize(object);
}

void initialize(gpointer classPointer, gpointer) {
    parentClass = static_cast<GObjectClass*>(g_type_class_peek_parent(classPointer));
    static_cast<GObjectClass*>(classPointer)->finalize = finalize;
    auto* const sourceClass = static_cast<ShumateMapSourceClass*>(classPointer);
    sourceClass->fill_tile_async = fillTile;
    sourceClass->fill_tile_finish = finishTile;
}

GType typeOfSource() {
    static const GType type = g_type_register_static_simple(
        SHUMATE_TYPE_MAP_SOURCE, "OrvaneTileSource", sizeof(ShumateMapSourceClass), initialize,
        sizeof(TileSource), nullptr, GTypeFlags{});
    return type;
}

}  // namespace

ShumateMapSource* createTileSource(const NSMapTiles& tiles,
                                   std::function<void(const std::string& message)> failed) {
    auto* const source = SHUMATE_MAP_SOURCE(g_object_new(typeOfSource(), nullptr));
    reinterpret_cast<TileSource*>(source)->state =
        new TileSource::State{TileLoader::create(tiles), std::move(failed)};
    shumate_map_source_set_id(source, "orvane");
    shumate_map_source_set_min_zoom_level(source, static_cast<guint>(tiles.minimumZoom));
    shumate_map_source_set_max_zoom_level(source, static_cast<guint>(tiles.maximumZoom));
    shumate_map_source_set_tile_size(source, static_cast<guint>(tiles.tileSize));
    shumate_map_source_set_projection(source, SHUMATE_MAP_PROJECTION_MERCATOR);
    return source;
}

}  // namespace orvane::platform
