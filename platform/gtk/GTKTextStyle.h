#pragma once

#include <gtkmm/cssprovider.h>
#include <gtkmm/widget.h>

#include <optional>

#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

// Gives the look of a text field to the widgets that show it: the field's font and colors, and no
// frame, no space around the text and no ground of the theme's.
class GTKTextStyle {
public:
    GTKTextStyle();

    // Styles the widget and all widgets in it. Must be called again when the widget has new
    // children.
    void apply(const NSTextFieldStyle& style, Gtk::Widget& widget);

private:
    Glib::RefPtr<Gtk::CssProvider> provider_;
    std::optional<NSTextFieldStyle> style_;
};

// Converts between the bytes of valid UTF-8 and the characters (code points) that GTK counts.
std::size_t toByte(const std::string& text, int character);
int toCharacter(const std::string& text, std::size_t byte);

}  // namespace orvane::platform
