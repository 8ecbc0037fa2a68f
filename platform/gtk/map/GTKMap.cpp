#include "platform/gtk/map/GTKMap.h"

#include <gtk/gtk.h>

#include <memory>

#include "platform/gtk/map/TileSource.h"
#include "platform/map/NSMapTiles.h"
#include "platform/map/NSMapView.h"

namespace orvane::platform {

GTKMap::Ground::Ground(GtkWidget* map) : Glib::ObjectBase("OrvaneMap"), map_(map) {
    gtk_widget_set_parent(map_, gobj());
    set_focusable(true);
    set_overflow(Gtk::Overflow::HIDDEN);
}

GTKMap::Ground::~Ground() {
    gtk_widget_unparent(map_);
}

void GTKMap::Ground::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                                   int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
}

void GTKMap::Ground::size_allocate_vfunc(int width, int height, int) {
    gtk_widget_allocate(map_, width, height, -1, nullptr);
}

void GTKMap::Ground::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    constexpr CGColor kColor = NSMapView::kGround;
    const GdkRGBA color = {static_cast<float>(kColor.red), static_cast<float>(kColor.green),
                           static_cast<float>(kColor.blue), 1};
    const graphene_rect_t bounds = {
        {0, 0}, {static_cast<float>(get_width()), static_cast<float>(get_height())}};
    gtk_snapshot_append_color(snapshot->gobj(), &color, &bounds);
    gtk_widget_snapshot_child(gobj(), map_, snapshot->gobj());
}

GTKMap::GTKMap(NSMapView& view) : view_(view), map_(shumate_map_new()), ground_(GTK_WIDGET(map_)) {
    ShumateViewport* const viewport = shumate_map_get_viewport(map_);
    // The control has the limits.
    shumate_viewport_set_min_zoom_level(viewport, 0);
    shumate_viewport_set_max_zoom_level(viewport, NSMapTiles::kMostZoom + 1);
    gtk_widget_set_can_focus(GTK_WIDGET(map_), FALSE);
    gtk_widget_set_can_target(GTK_WIDGET(map_), FALSE);
}

GTKMap::~GTKMap() = default;

void GTKMap::stateDidChange() {
    if (shownTiles_ != view_.tilesRevision()) {
        shownTiles_ = view_.tilesRevision();
        showTiles();
    }
    ShumateViewport* const viewport = shumate_map_get_viewport(map_);
    const NSMapView::Coordinate center = view_.center();
    shumate_viewport_set_zoom_level(viewport, view_.zoom());
    shumate_location_set_location(SHUMATE_LOCATION(viewport), center.latitude, center.longitude);
    if (label_ != view_.accessibilityLabel()) {
        label_ = view_.accessibilityLabel();
        gtk_accessible_update_property(GTK_ACCESSIBLE(ground_.gobj()),
                                       GTK_ACCESSIBLE_PROPERTY_LABEL, label_.c_str(), -1);
    }
}

void GTKMap::showTiles() {
    if (tiles_ != nullptr) {
        shumate_map_remove_layer(map_, SHUMATE_LAYER(tiles_));
        tiles_ = nullptr;
    }
    if (view_.tiles().kind == NSMapTiles::Kind::None) {
        return;
    }
    const auto failed = [this, alive = std::weak_ptr<bool>(alive_),
                         revision = shownTiles_](const std::string& message) {
        if (!alive.expired() && revision == shownTiles_) {
            view_.tilesFailed(message);
        }
    };
    ShumateMapSource* const source = createTileSource(view_.tiles(), failed);
    ShumateViewport* const viewport = shumate_map_get_viewport(map_);
    shumate_viewport_set_reference_map_source(viewport, source);
    tiles_ = shumate_map_layer_new(source, viewport);
    shumate_map_add_layer(map_, SHUMATE_LAYER(tiles_));
    g_object_unref(source);
}

}  // namespace orvane::platform
