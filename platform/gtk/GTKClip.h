#pragma once

#include <gtk/gtk.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/gtk/toRoundedRect.h"

namespace orvane::platform {

// A widget that cuts off what its child shows outside it, and the pointer there. GTKView puts one
// around itself for each clip of its view, and lays it out. Main thread only.
class GTKClip final : public Gtk::Widget {
public:
    GTKClip() : Glib::ObjectBase("OrvaneClip") { set_overflow(Gtk::Overflow::HIDDEN); }

    // Rounds the corners. In the widget's coordinates.
    void setCornerRadii(CGSize radii) {
        if (radii_ != radii) {
            radii_ = radii;
            queue_draw();
        }
    }

protected:
    void measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                       int& naturalBaseline) const override {
        minimum = natural = 0;
        minimumBaseline = naturalBaseline = -1;
    }
    // The clip itself takes no pointer.
    bool contains_vfunc(double, double) const override { return false; }
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override {
        if (radii_ != CGSize{}) {
            const GskRoundedRect inside = toRoundedRect(
                {{0, 0}, {static_cast<double>(get_width()), static_cast<double>(get_height())}},
                radii_);
            gtk_snapshot_push_rounded_clip(snapshot->gobj(), &inside);
        }
        Gtk::Widget::snapshot_vfunc(snapshot);
        if (radii_ != CGSize{}) {
            snapshot->pop();
        }
    }

private:
    CGSize radii_;
};

}  // namespace orvane::platform
