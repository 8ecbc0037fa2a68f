#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

#include "platform/gtk/GTKTextField.h"

namespace orvane::platform {

// Shows a text field of several lines with a Gtk::TextView that scrolls, and gives it the
// placeholder and the maximum length that it does not have.
class GTKMultilineField final : public GTKTextField {
public:
    explicit GTKMultilineField(NSTextField& field);
    ~GTKMultilineField() override;

    Gtk::Widget& widget() override { return scrolled_; }
    void grabFocus() override { view_.grab_focus(); }

private:
    void connectText();
    void showText() override;
    void showTraits() override;
    void takeText() override;
    GtkAccessible* accessible() override { return GTK_ACCESSIBLE(view_.gobj()); }

    std::string text() const;
    void insert(GtkTextIter* place, const std::string& inserted);
    // While the text is empty and nothing is composed.
    void showPlaceholder();
    void fitPlaceholder();

    Gtk::ScrolledWindow scrolled_;
    Gtk::TextView view_;
    GtkTextBuffer* buffer_;
    GtkLabel* placeholder_;  // owned by the view
    sigc::connection widthChanged_;
    guint fitTimer_ = 0;
    bool isPassing_ = false;    // the buffer itself is to change
    bool isComposing_ = false;  // an input method shows text that is not entered yet
};

}  // namespace orvane::platform
