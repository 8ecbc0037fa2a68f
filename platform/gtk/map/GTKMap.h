#pragma once

#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>
#include <shumate/shumate.h>

#include <memory>
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

    Gtk::Widget& widget() override { return ground_; }
    void stateDidChange() override;

private:
    // Contains the library's widget, which paints nothing where there is no tile. Has the keyboard,
    // and leaves all keys to the control.
    class Ground final : public Gtk::Widget {
    public:
        // Takes over the widget.
        explicit Ground(GtkWidget* map);
        ~Ground() override;

    protected:
        void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                           int& minimumBaseline, int& naturalBaseline) const override;
        void size_allocate_vfunc(int width, int height, int baseline) override;
        void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

    private:
        GtkWidget* map_;
    };

    void showTiles();

    NSMapView& view_;
    ShumateMap* map_;  // owned by the ground
    Ground ground_;
    ShumateMapLayer* tiles_ = nullptr;  // owned by the map; null without tiles
    unsigned shownTiles_ = 0;           // the revision of the tiles that are shown
    std::string label_;
    // Expired when this object is gone: sources may still load.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane::platform
