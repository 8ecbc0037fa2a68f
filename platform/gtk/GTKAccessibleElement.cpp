#include "platform/gtk/GTKAccessibleElement.h"

#include <gtk/gtk.h>

#include <utility>

#include "platform/gtk/toExtent.h"

namespace orvane::platform {

namespace {

GtkAccessibleRole toGtkRole(NSAccessibilityRole role) {
    constexpr GtkAccessibleRole kRoles[] = {
        GTK_ACCESSIBLE_ROLE_BUTTON,       GTK_ACCESSIBLE_ROLE_CHECKBOX,
        GTK_ACCESSIBLE_ROLE_SWITCH,       GTK_ACCESSIBLE_ROLE_RADIO,
        GTK_ACCESSIBLE_ROLE_LINK,         GTK_ACCESSIBLE_ROLE_TAB,
        GTK_ACCESSIBLE_ROLE_TAB_LIST,     GTK_ACCESSIBLE_ROLE_SLIDER,
        GTK_ACCESSIBLE_ROLE_PROGRESS_BAR, GTK_ACCESSIBLE_ROLE_IMG,
        GTK_ACCESSIBLE_ROLE_HEADING,      GTK_ACCESSIBLE_ROLE_LABEL,
        GTK_ACCESSIBLE_ROLE_LIST,         GTK_ACCESSIBLE_ROLE_LIST_ITEM,
        GTK_ACCESSIBLE_ROLE_GROUP,        GTK_ACCESSIBLE_ROLE_DIALOG};
    static_assert(std::size(kRoles) == static_cast<std::size_t>(NSAccessibilityRole::Dialog) + 1);
    return kRoles[static_cast<std::size_t>(role)];
}

struct Action {
    unsigned bit;
    const char* name;
};
constexpr Action kActions[] = {{kNSAccessibilityPress, "press"},
                               {kNSAccessibilityIncrement, "increment"},
                               {kNSAccessibilityDecrement, "decrement"}};

void updateText(GtkAccessible* accessible, GtkAccessibleProperty property,
                const std::string& before, const std::string& text) {
    if (before == text) {
        return;
    }
    if (text.empty()) {
        gtk_accessible_reset_property(accessible, property);
    } else {
        gtk_accessible_update_property(accessible, property, text.c_str(), -1);
    }
}

// GTK 4.8 tells assistive technology the values of its own kinds of widgets only, so the value is a
// part of the description.
std::string spokenDescription(const NSAccessibilityElement& element) {
    const bool hasBoth = !element.value.empty() && !element.description.empty();
    return element.value + (hasBoth ? ", " : "") + element.description;
}

void updateNumber(GtkAccessible* accessible, GtkAccessibleProperty property,
                  std::optional<double> number) {
    if (number) {
        gtk_accessible_update_property(accessible, property, *number, -1);
    } else {
        gtk_accessible_reset_property(accessible, property);
    }
}

}  // namespace

GTKAccessibleElement::GTKAccessibleElement(NSAccessibilityRole role, Perform perform)
    : Glib::ObjectBase("OrvaneAccessibleElement"), perform_(std::move(perform)) {
    element_.role = role;
    // The role is set on the object because gtkmm gives no access to the class's initialization,
    // where GTK expects it.
    g_object_set(gobj(), "accessible-role", toGtkRole(role), nullptr);
    set_can_target(false);
}

GTKAccessibleElement::~GTKAccessibleElement() {
    while (Gtk::Widget* const child = get_first_child()) {
        child->unparent();
    }
    if (get_parent() != nullptr) {
        unparent();
    }
}

void GTKAccessibleElement::update(const NSAccessibilityElement& element, CGPoint origin) {
    if (element == element_ && origin == origin_) {
        return;
    }
    const NSAccessibilityElement before = std::exchange(element_, element);
    auto* const accessible = GTK_ACCESSIBLE(gobj());
    updateText(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, before.label, element.label);
    updateText(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, spokenDescription(before),
               spokenDescription(element));
    updateText(accessible, GTK_ACCESSIBLE_PROPERTY_VALUE_TEXT, before.value, element.value);
    if (before.number != element.number || before.minimum != element.minimum ||
        before.maximum != element.maximum) {
        updateNumber(accessible, GTK_ACCESSIBLE_PROPERTY_VALUE_MIN, element.minimum);
        updateNumber(accessible, GTK_ACCESSIBLE_PROPERTY_VALUE_MAX, element.maximum);
        updateNumber(accessible, GTK_ACCESSIBLE_PROPERTY_VALUE_NOW, element.number);
    }
    updateStates();
    if (before.actions != element.actions) {
        updateActions();
    }
    if (get_focusable() != element.isFocusable) {
        set_focusable(element.isFocusable);
    }
    if (before.frame != element.frame || origin != origin_) {
        origin_ = origin;
        if (Gtk::Widget* const parent = get_parent()) {
            parent->queue_allocate();
        }
    }
}

void GTKAccessibleElement::updateStates() {
    auto* const accessible = GTK_ACCESSIBLE(gobj());
    const auto tell = [accessible](GtkAccessibleState state, std::optional<bool> isSet) {
        if (isSet) {
            gtk_accessible_update_state(accessible, state, *isSet ? TRUE : FALSE, -1);
        } else {
            gtk_accessible_reset_state(accessible, state);
        }
    };
    tell(GTK_ACCESSIBLE_STATE_CHECKED, element_.isChecked);
    tell(GTK_ACCESSIBLE_STATE_SELECTED, element_.isSelected);
    tell(GTK_ACCESSIBLE_STATE_EXPANDED, element_.isExpanded);
    tell(GTK_ACCESSIBLE_STATE_DISABLED,
         element_.isEnabled ? std::nullopt : std::optional<bool>(true));
}

// GTK gives assistive technology the actions of a widget.
void GTKAccessibleElement::updateActions() {
    GSimpleActionGroup* const group = g_simple_action_group_new();
    for (const Action& action : kActions) {
        if ((element_.actions & action.bit) == 0) {
            continue;
        }
        GSimpleAction* const simple = g_simple_action_new(action.name, nullptr);
        g_signal_connect(
            simple, "activate",
            G_CALLBACK(+[](GSimpleAction* activated, GVariant*, GTKAccessibleElement* self) {
                for (const Action& each : kActions) {
                    if (g_str_equal(each.name, g_action_get_name(G_ACTION(activated))) != FALSE) {
                        self->perform_(each.bit);
                        return;  // this element may be gone
                    }
                }
            }),
            this);
        g_action_map_add_action(G_ACTION_MAP(group), G_ACTION(simple));
        g_object_unref(simple);
    }
    gtk_widget_insert_action_group(Gtk::Widget::gobj(), "element", G_ACTION_GROUP(group));
    g_object_unref(group);
}

void GTKAccessibleElement::allocate() {
    const CGRect& frame = element_.frame;
    const graphene_point_t origin = {static_cast<float>(frame.origin.x - origin_.x),
                                     static_cast<float>(frame.origin.y - origin_.y)};
    gtk_widget_allocate(Gtk::Widget::gobj(), toExtent(frame.size.width),
                        toExtent(frame.size.height), -1, gsk_transform_translate(nullptr, &origin));
}

void GTKAccessibleElement::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                                         int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
}

void GTKAccessibleElement::size_allocate_vfunc(int, int, int) {
    for (Gtk::Widget* child = get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        if (auto* const element = dynamic_cast<GTKAccessibleElement*>(child)) {
            element->allocate();
        }
    }
}

}  // namespace orvane::platform
