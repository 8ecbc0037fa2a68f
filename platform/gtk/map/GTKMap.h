#pragma once

#include <gtkmm/box.h>
#include <shumate/shumate.h>

#include <string>

#include "platform/gtk/GTKControl.h"

namespace orvane::platform {

class NSMapView;

// Shows the tiles of a map with the desktop's library. It takes no input: the control moves the map
// itself, the same way in every window.
class GTKMap final : public GTKControl {
public:
    // The control is borrowed and must outlive this object.
    explicit GTKMap(NSMapView& view);
    ~GTKMap() override;

    Gtk::Widget& widget() override { return box_; }
    void stateDidChange() override;

private:
    void showTiles();

    NSMapView& view_;
    Gtk::Box box_;
    ShumateMap* map_;                   // owned by the box
    ShumateMapLayer* tiles_ = nullptr;  // owned by the map; null without tiles
    unsigned shownTiles_ = 0;           // the revision of the tiles that are shown
    std::string label_;
    // Expired when this object is gone: sources may still load.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane::platform
