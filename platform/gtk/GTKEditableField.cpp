#include "platform/gtk/GTKEditableField.h"

#include "orvane/commons/ScopedFlag.h"
#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

void GTKEditableField::detach() {
    g_signal_handlers_disconnect_by_data(text_, this);
    g_signal_handlers_disconnect_by_data(editable_, this);
}

void GTKEditableField::attach(GtkEditable* editable) {
    editable_ = editable;
    text_ = GTK_TEXT(gtk_editable_get_delegate(editable));
    // The view decides the width: remove the widget's own minimum.
    gtk_editable_set_width_chars(editable, 0);
    gtk_editable_set_max_width_chars(editable, 0);
    connect(GTK_WIDGET(text_));
    connectText();
}

void GTKEditableField::connectText() {
    // These run before the handlers of everyone else, also those of assistive technology.
    g_signal_connect(text_, "insert-text",
                     G_CALLBACK(+[](GtkEditable* text, const char* inserted, int length,
                                    int* position, GTKEditableField* self) {
                         if (self->isPassing_) {
                             return;
                         }
                         g_signal_stop_emission_by_name(text, "insert-text");
                         const std::string whole =
                             length < 0 ? inserted
                                        : std::string(inserted, static_cast<std::size_t>(length));
                         *position = self->insertText(whole, *position);
                     }),
                     this);
    g_signal_connect(text_, "delete-text",
                     G_CALLBACK(+[](GtkEditable* text, int from, int to, GTKEditableField* self) {
                         if (self->isPassing_) {
                             return;
                         }
                         g_signal_stop_emission_by_name(text, "delete-text");
                         const int length = gtk_text_get_text_length(GTK_TEXT(text));
                         self->deleteText(from, to < 0 ? length : to);
                     }),
                     this);
    for (const char* const signal :
         {"changed", "notify::cursor-position", "notify::selection-bound"}) {
        // The object is the last argument of all three, and the first when swapped.
        g_signal_connect_swapped(text_, signal,
                                 G_CALLBACK(+[](GTKEditableField* self) { self->textDidChange(); }),
                                 this);
    }
    g_signal_connect_swapped(editable_, "activate",
                             G_CALLBACK(+[](GTKEditableField* self) { self->field_.commit(); }),
                             this);
}

void GTKEditableField::grabFocus() {
    gtk_text_grab_focus_without_selecting(text_);
}

int GTKEditableField::insertIntoWidget(const std::string& text, int position) {
    const commons::ScopedFlag passing(isPassing_);
    gtk_editable_insert_text(GTK_EDITABLE(text_), text.c_str(), static_cast<int>(text.size()),
                             &position);
    return position;
}

void GTKEditableField::deleteFromWidget(int from, int to) {
    const commons::ScopedFlag passing(isPassing_);
    gtk_editable_delete_text(GTK_EDITABLE(text_), from, to);
}

GTKEditableField::Range GTKEditableField::widgetSelection() const {
    // Of the text in the widget: the widget itself reports the end of the selection as the caret.
    GtkEditable* const text = GTK_EDITABLE(text_);
    Range range{};
    range.caret = gtk_editable_get_position(text);
    int begin = 0;
    int end = 0;
    gtk_editable_get_selection_bounds(text, &begin, &end);
    range.anchor = begin == range.caret ? end : begin;
    return range;
}

void GTKEditableField::selectInWidget(const Range& range) {
    if (widgetSelection() != range) {
        gtk_editable_select_region(editable_, range.anchor, range.caret);
    }
}

void GTKEditableField::showTraits() {
    if (placeholder_ != field_.placeholder()) {
        placeholder_ = field_.placeholder();
        g_object_set(editable_, "placeholder-text", placeholder_.c_str(), nullptr);
    }
    const CTTextAlignment alignment = field_.style().alignment;
    gtk_editable_set_alignment(editable_, alignment == CTTextAlignment::Right    ? 1.0F
                                          : alignment == CTTextAlignment::Center ? 0.5F
                                                                                 : 0.0F);
    gtk_editable_set_editable(editable_, field_.isEditable() ? TRUE : FALSE);
    if (field_.kind() == NSTextField::Kind::Line) {
        g_object_set(text_, "input-purpose", inputPurpose(field_), nullptr);
    }
}

}  // namespace orvane::platform
