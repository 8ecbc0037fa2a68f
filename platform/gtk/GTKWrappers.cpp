#include "platform/gtk/GTKWrappers.h"

#include <gdkmm/display.h>
#include <gdkmm/frameclock.h>
#include <gdkmm/surface.h>
#include <gdkmm/texture.h>
#include <glibmm/init.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/window.h>

// After the classes that they describe.
#include <gdkmm/private/display_p.h>
#include <gdkmm/private/frameclock_p.h>
#include <gdkmm/private/surface_p.h>
#include <gdkmm/private/texture_p.h>
#include <gtkmm/private/snapshot_p.h>
#include <gtkmm/private/widget_p.h>
#include <gtkmm/private/window_p.h>

namespace orvane::platform {

void registerWindowWrappers() {
    Glib::init();
    Glib::wrap_register(gdk_display_get_type(), &Gdk::Display_Class::wrap_new);
    Glib::wrap_register(gdk_frame_clock_get_type(), &Gdk::FrameClock_Class::wrap_new);
    Glib::wrap_register(gdk_surface_get_type(), &Gdk::Surface_Class::wrap_new);
    Glib::wrap_register(gdk_texture_get_type(), &Gdk::Texture_Class::wrap_new);
    Glib::wrap_register(gtk_snapshot_get_type(), &Gtk::Snapshot_Class::wrap_new);
    Glib::wrap_register(gtk_widget_get_type(), &Gtk::Widget_Class::wrap_new);
    Glib::wrap_register(gtk_window_get_type(), &Gtk::Window_Class::wrap_new);
}

void registerAllWrappers() {
    Gtk::init_gtkmm_internals();
}

}  // namespace orvane::platform
