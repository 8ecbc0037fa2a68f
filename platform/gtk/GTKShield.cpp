#include "platform/gtk/GTKShield.h"

#include <gtk/gtk.h>

#include <utility>

namespace orvane::platform {

GTKShield::GTKShield(Gtk::Widget& parent, std::function<bool(CGPoint)> isCovered)
    : Glib::ObjectBase("OrvaneShield"), isCovered_(std::move(isCovered)) {
    g_object_set(Gtk::Widget::gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
    set_parent(parent);
}

GTKShield::~GTKShield() {
    unparent();
}

bool GTKShield::contains_vfunc(double x, double y) const {
    return isCovered_({x, y});
}

}  // namespace orvane::platform
