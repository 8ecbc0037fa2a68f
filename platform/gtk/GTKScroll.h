#pragma once

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/eventcontrollerscroll.h>
#include <gtkmm/widget.h>

#include <functional>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

// Turns what wheels and touchpads do over a widget, and what its children do not use of it, into
// scroll events. The momentum of a touchpad gesture is the views' own, not GTK's. Main thread only.
class GTKScroll {
public:
    // The widget is borrowed. `send` delivers an event and returns whether it was used.
    GTKScroll(Gtk::Widget& widget, std::function<bool(const NSEvent&)> send);
    ~GTKScroll();
    GTKScroll(const GTKScroll&) = delete;
    GTKScroll& operator=(const GTKScroll&) = delete;

private:
    bool scroll(double dx, double dy);
    void sendPhase(NSEventPhase phase);
    // An event of the present time and place.
    NSEvent makeEvent() const;

    Gtk::Widget& widget_;
    std::function<bool(const NSEvent&)> send_;
    Glib::RefPtr<Gtk::EventControllerScroll> controller_;
    Glib::RefPtr<Gtk::EventControllerMotion> motion_;
    CGPoint pointer_;         // in the widget's coordinates
    bool isGesture_ = false;  // fingers are on a touchpad
};

}  // namespace orvane::platform
