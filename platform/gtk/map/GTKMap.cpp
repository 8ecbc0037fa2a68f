#include "platform/gtk/map/GTKMap.h"

#include <gtk/gtk.h>

#include <memory>

#include "platform/gtk/map/TileSource.h"
#include "platform/map/NSMapView.h"

namespace orvane::platform {

GTKMap::GTKMap(NSMapView& view) : view_(view), map_(shumate_map_new()) {
    ShumateViewport* const viewport = shumate_map_get_viewport(map_);
    // The control has the limits.
    shumate_viewport_set_min_zoom_level(viewport, 0);
    shumate_viewport_set_max_zoom_level(viewport, NSMapTiles::kMostZoom + 1);
    GtkWidget* const widget = GTK_WIDGET(map_);
    gtk_widget_set_hexpand(widget, TRUE);
    gtk_widget_set_vexpand(widget, TRUE);
    gtk_widget_set_focusable(widget, FALSE);
    gtk_widget_set_can_focus(widget, FALSE);
    gtk_widget_set_can_target(widget, FALSE);
    gtk_box_append(box_.gobj(), widget);
    // The box has the keyboard; it leaves all keys to the control.
    box_.set_focusable(true);
    box_.set_overflow(Gtk::Overflow::HIDDEN);
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
        gtk_accessible_update_property(GTK_ACCESSIBLE(box_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       label_.c_str(), -1);
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
