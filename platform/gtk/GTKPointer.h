#pragma once

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/widget.h>

#include <functional>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

enum class NSCursor;

// Turns the movements of the pointer over a widget and its children, while the left button is up,
// and presses of the other buttons into events. Main thread only.
class GTKPointer {
public:
    // The widget is borrowed.
    GTKPointer(Gtk::Widget& widget, std::function<void(const NSEvent&)> send);
    ~GTKPointer();
    GTKPointer(const GTKPointer&) = delete;
    GTKPointer& operator=(const GTKPointer&) = delete;

    // Shows a shape of the pointer over the widget.
    void setCursor(NSCursor cursor);

private:
    void move(double x, double y);
    void click(NSEventType type, double x, double y, guint button);
    void send(NSEventType type, double x, double y, GtkEventController* source, int button);

    Gtk::Widget& widget_;
    std::function<void(const NSEvent&)> send_;
    Glib::RefPtr<Gtk::EventControllerMotion> motion_;
    Glib::RefPtr<Gtk::GestureClick> clicks_;
};

}  // namespace orvane::platform
