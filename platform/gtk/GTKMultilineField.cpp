#include "platform/gtk/GTKMultilineField.h"

#include "orvane/commons/ScopedFlag.h"
#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

GTKMultilineField::GTKMultilineField(NSTextField& field)
    : GTKTextField(field),
      buffer_(gtk_text_view_get_buffer(view_.gobj())),
      placeholder_(GTK_LABEL(gtk_label_new(nullptr))) {
    scrolled_.set_child(view_);
    // The view decides the size.
    scrolled_.set_policy(Gtk::PolicyType::EXTERNAL, Gtk::PolicyType::AUTOMATIC);
    scrolled_.set_min_content_height(0);
    view_.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
    view_.set_accepts_tab(false);
    GtkWidget* const label = GTK_WIDGET(placeholder_);
    gtk_widget_add_css_class(label, "placeholder");
    gtk_widget_set_can_target(label, FALSE);
    // It wraps at the width of the view: its natural width is as small as possible.
    gtk_label_set_wrap(placeholder_, TRUE);
    gtk_label_set_xalign(placeholder_, 0);
    gtk_label_set_max_width_chars(placeholder_, 1);
    gtk_text_view_add_overlay(view_.gobj(), label, 0, 0);
    const Glib::RefPtr<Gtk::Adjustment> width = scrolled_.get_hadjustment();
    widthChanged_ = width->signal_changed().connect([this] {
        // GTK is laying out; the request must wait until it is done.
        if (fitTimer_ == 0) {
            fitTimer_ = g_idle_add_full(
                G_PRIORITY_HIGH_IDLE,
                [](void* self) -> gboolean {
                    static_cast<GTKMultilineField*>(self)->fitPlaceholder();
                    return G_SOURCE_REMOVE;
                },
                this, nullptr);
        }
    });
    connect(GTK_WIDGET(view_.gobj()));
    connectText();
}

GTKMultilineField::~GTKMultilineField() {
    widthChanged_.disconnect();
    if (fitTimer_ != 0) {
        g_source_remove(fitTimer_);
    }
    g_signal_handlers_disconnect_by_data(buffer_, this);
    g_signal_handlers_disconnect_by_data(view_.gobj(), this);
}

void GTKMultilineField::connectText() {
    g_signal_connect(buffer_, "insert-text",
                     G_CALLBACK(+[](GtkTextBuffer* buffer, GtkTextIter* place, const char* inserted,
                                    int length, GTKMultilineField* self) {
                         if (self->isPassing_) {
                             return;
                         }
                         g_signal_stop_emission_by_name(buffer, "insert-text");
                         self->insert(
                             place, length < 0
                                        ? std::string(inserted)
                                        : std::string(inserted, static_cast<std::size_t>(length)));
                     }),
                     this);
    g_signal_connect_swapped(buffer_, "changed", G_CALLBACK(+[](GTKMultilineField* self) {
                                 self->showPlaceholder();
                                 self->textDidChange();
                             }),
                             this);
    g_signal_connect_swapped(buffer_, "notify::cursor-position",
                             G_CALLBACK(+[](GTKMultilineField* self) { self->textDidChange(); }),
                             this);
    // Also sent when the anchor of the selection moves.
    g_signal_connect(buffer_, "mark-set",
                     G_CALLBACK(+[](GtkTextBuffer* buffer, GtkTextIter*, GtkTextMark* mark,
                                    GTKMultilineField* self) {
                         if (mark == gtk_text_buffer_get_selection_bound(buffer)) {
                             self->textDidChange();
                         }
                     }),
                     this);
    g_signal_connect(view_.gobj(), "preedit-changed",
                     G_CALLBACK(+[](GtkTextView*, const char* preedit, GTKMultilineField* self) {
                         self->isComposing_ = preedit != nullptr && *preedit != '\0';
                         self->showPlaceholder();
                     }),
                     this);
}

std::string GTKMultilineField::text() const {
    GtkTextIter begin;
    GtkTextIter end;
    gtk_text_buffer_get_bounds(buffer_, &begin, &end);
    char* const copy = gtk_text_buffer_get_text(buffer_, &begin, &end, TRUE);
    std::string result = copy;
    g_free(copy);
    return result;
}

void GTKMultilineField::insert(GtkTextIter* place, const std::string& inserted) {
    NSTextEditor rules(NSTextEditor::Kind::Multiline);
    std::string fitting;
    if (isShowing_) {
        fitting = inserted;
    } else {
        rules.setMaximumLength(field_.maximumLength());
        rules.setText(text());
        const std::size_t at = toByte(rules.text(), gtk_text_iter_get_offset(place));
        fitting = rules.fitting(rules.acceptable(inserted), {at, 0});
    }
    const commons::ScopedFlag passing(isPassing_);
    // The iterator is valid again afterward, behind the text.
    gtk_text_buffer_insert(buffer_, place, fitting.c_str(), static_cast<int>(fitting.size()));
}

void GTKMultilineField::showText() {
    const std::string& wanted = field_.stringValue();
    if (text() != wanted) {
        gtk_text_buffer_set_text(buffer_, wanted.c_str(), static_cast<int>(wanted.size()));
    }
    const int anchor = toCharacter(wanted, field_.selectionAnchor());
    const int caret = toCharacter(wanted, field_.caret());
    GtkTextIter atAnchor;
    GtkTextIter atCaret;
    gtk_text_buffer_get_iter_at_mark(buffer_, &atAnchor,
                                     gtk_text_buffer_get_selection_bound(buffer_));
    gtk_text_buffer_get_iter_at_mark(buffer_, &atCaret, gtk_text_buffer_get_insert(buffer_));
    if (gtk_text_iter_get_offset(&atAnchor) != anchor ||
        gtk_text_iter_get_offset(&atCaret) != caret) {
        gtk_text_buffer_get_iter_at_offset(buffer_, &atAnchor, anchor);
        gtk_text_buffer_get_iter_at_offset(buffer_, &atCaret, caret);
        gtk_text_buffer_select_range(buffer_, &atCaret, &atAnchor);
        gtk_text_view_scroll_mark_onscreen(view_.gobj(), gtk_text_buffer_get_insert(buffer_));
    }
}

void GTKMultilineField::takeText() {
    const std::string present = text();
    GtkTextIter anchor;
    GtkTextIter caret;
    gtk_text_buffer_get_iter_at_mark(buffer_, &anchor,
                                     gtk_text_buffer_get_selection_bound(buffer_));
    gtk_text_buffer_get_iter_at_mark(buffer_, &caret, gtk_text_buffer_get_insert(buffer_));
    field_.takeInput(present, toByte(present, gtk_text_iter_get_offset(&anchor)),
                     toByte(present, gtk_text_iter_get_offset(&caret)));
}

void GTKMultilineField::fitPlaceholder() {
    fitTimer_ = 0;
    gtk_widget_set_size_request(GTK_WIDGET(placeholder_),
                                static_cast<int>(scrolled_.get_hadjustment()->get_page_size()), -1);
}

void GTKMultilineField::showPlaceholder() {
    const bool isShown = gtk_text_buffer_get_char_count(buffer_) == 0 && !isComposing_ &&
                         !field_.placeholder().empty();
    gtk_widget_set_visible(GTK_WIDGET(placeholder_), isShown ? TRUE : FALSE);
}

void GTKMultilineField::showTraits() {
    if (gtk_label_get_text(placeholder_) != field_.placeholder()) {
        gtk_label_set_text(placeholder_, field_.placeholder().c_str());
        gtk_accessible_update_property(GTK_ACCESSIBLE(view_.gobj()),
                                       GTK_ACCESSIBLE_PROPERTY_PLACEHOLDER,
                                       field_.placeholder().c_str(), -1);
    }
    showPlaceholder();
    const CTTextAlignment alignment = field_.style().alignment;
    view_.set_justification(alignment == CTTextAlignment::Right    ? Gtk::Justification::RIGHT
                            : alignment == CTTextAlignment::Center ? Gtk::Justification::CENTER
                                                                   : Gtk::Justification::LEFT);
    gtk_label_set_xalign(placeholder_, alignment == CTTextAlignment::Right    ? 1.0F
                                       : alignment == CTTextAlignment::Center ? 0.5F
                                                                              : 0.0F);
    view_.set_editable(field_.isEditable());
    g_object_set(view_.gobj(), "input-purpose", inputPurpose(field_), nullptr);
}

}  // namespace orvane::platform
