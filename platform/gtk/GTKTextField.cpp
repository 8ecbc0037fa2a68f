#include "platform/gtk/GTKTextField.h"

#include "orvane/commons/ScopedFlag.h"
#include "platform/appkit/NSTextField.h"
#include "platform/gtk/GTKLineField.h"
#include "platform/gtk/GTKMultilineField.h"
#include "platform/gtk/GTKSecretField.h"

namespace orvane::platform {

std::unique_ptr<GTKControl> GTKTextField::create(NSTextField& field) {
    switch (field.kind()) {
        case NSTextField::Kind::Multiline:
            return std::make_unique<GTKMultilineField>(field);
        case NSTextField::Kind::Secret:
            return std::make_unique<GTKSecretField>(field);
        case NSTextField::Kind::Line:
            break;
    }
    return std::make_unique<GTKLineField>(field);
}

void GTKTextField::connect(GtkWidget* focused) {
    GtkEventController* const keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect_swapped(
        keys, "key-pressed",
        G_CALLBACK(+[](GTKTextField* self, guint key, guint, GdkModifierType state) {
            return self->keyPressed(key, state);
        }),
        this);
    gtk_widget_add_controller(focused, keys);
}

gboolean GTKTextField::keyPressed(guint key, GdkModifierType state) {
    // A change that waits for the display pass must not come after this key.
    if (field_.revision() != shown_) {
        stateDidChange();
    }
    const bool isEnter = key == GDK_KEY_Return || key == GDK_KEY_KP_Enter;
    if (isEnter && (state & GDK_CONTROL_MASK) != 0 &&
        field_.kind() == NSTextField::Kind::Multiline) {
        field_.commit();
        return TRUE;
    }
    return FALSE;
}

void GTKTextField::stateDidChange() {
    shown_ = field_.revision();
    const commons::ScopedFlag showing(isShowing_);
    showText();
    showTraits();
    style_.apply(field_.style(), widget());
    widget().set_sensitive(field_.isEnabled());
    if (label_ != field_.accessibilityLabel()) {
        label_ = field_.accessibilityLabel();
        gtk_accessible_update_property(accessible(), GTK_ACCESSIBLE_PROPERTY_LABEL, label_.c_str(),
                                       -1);
    }
}

void GTKTextField::textDidChange() {
    if (!isShowing_) {
        takeText();
    }
}

GtkInputPurpose GTKTextField::inputPurpose(const NSTextField& field) {
    switch (field.purpose()) {
        case NSTextPurpose::FreeForm:
            break;
        case NSTextPurpose::Digits:
            return GTK_INPUT_PURPOSE_DIGITS;
        case NSTextPurpose::Number:
            return GTK_INPUT_PURPOSE_NUMBER;
        case NSTextPurpose::Phone:
            return GTK_INPUT_PURPOSE_PHONE;
        case NSTextPurpose::URL:
            return GTK_INPUT_PURPOSE_URL;
        case NSTextPurpose::Email:
            return GTK_INPUT_PURPOSE_EMAIL;
        case NSTextPurpose::Name:
            return GTK_INPUT_PURPOSE_NAME;
        case NSTextPurpose::Pin:
            return GTK_INPUT_PURPOSE_PIN;
    }
    return GTK_INPUT_PURPOSE_FREE_FORM;
}

}  // namespace orvane::platform
