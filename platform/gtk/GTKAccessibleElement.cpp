#include "platform/gtk/GTKAccessibleElement.h"

#include <gtk/gtk.h>

#include "platform/gtk/toExtent.h"

namespace orvane::platform {

GTKAccessibleElement::GTKAccessibleElement(Gtk::Widget& parent)
    : Glib::ObjectBase("OrvaneAccessibleElement") {
    // The role is set on the object because gtkmm gives no access to the class's initialization,
    // where GTK expects it.
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_LABEL, nullptr);
    set_can_target(false);
    set_parent(parent);
}

GTKAccessibleElement::~GTKAccessibleElement() {
    unparent();
}

void GTKAccessibleElement::update(const std::string& label, const CGRect& frame) {
    if (label != label_) {
        label_ = label;
        gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       label_.c_str(), -1);
    }
    if (frame != frame_) {
        frame_ = frame;
        get_parent()->queue_allocate();
    }
}

void GTKAccessibleElement::allocate() {
    const graphene_point_t origin = {static_cast<float>(frame_.origin.x),
                                     static_cast<float>(frame_.origin.y)};
    gtk_widget_allocate(gobj(), toExtent(frame_.size.width), toExtent(frame_.size.height), -1,
                        gsk_transform_translate(nullptr, &origin));
}

void GTKAccessibleElement::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                                         int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
}

}  // namespace orvane::platform
