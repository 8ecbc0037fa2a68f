#pragma once

#include <gtkmm/widget.h>

namespace orvane::platform {

// A widget that cuts off what its child shows outside it, and the pointer there. GTKView puts one
// around itself for each clip of its view, and lays it out. Main thread only.
class GTKClip final : public Gtk::Widget {
public:
    GTKClip() : Glib::ObjectBase("OrvaneClip") { set_overflow(Gtk::Overflow::HIDDEN); }

protected:
    void measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                       int& naturalBaseline) const override {
        minimum = natural = 0;
        minimumBaseline = naturalBaseline = -1;
    }
    // The clip itself takes no pointer.
    bool contains_vfunc(double, double) const override { return false; }
};

}  // namespace orvane::platform
