#include "platform/gtk/GTKTextStyle.h"

#include <gtk/gtk.h>

#include <string>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/cssFont.h"

namespace orvane::platform {

namespace {

// CSS has decimal points in every language.
std::string number(double value) {
    char text[G_ASCII_DTOSTR_BUF_SIZE];
    return g_ascii_formatd(text, sizeof text, "%.6g", value);
}

std::string cssColor(const CGColor& color) {
    return "rgba(" + number(color.red * 255) + "," + number(color.green * 255) + "," +
           number(color.blue * 255) + "," + number(color.alpha) + ")";
}

std::string cssOf(const NSTextFieldStyle& style) {
    CGColor disabled = style.textColor;
    disabled.alpha *= 0.5;
    const std::string ink = "color:" + cssColor(style.textColor) + ";";
    return "entry,password,textview,scrolledwindow{background:" + cssColor(style.backgroundColor) +
           ";border:none;border-radius:0;outline:none;box-shadow:none;padding:0;margin:0;"
           "min-height:0;min-width:0;}"
           "text,viewport{background:none;margin:0;padding:0;outline:none;min-height:0;}"
           "entry,password,textview,text,.placeholder,placeholder{" +
           cssFont(*CTFont::createWithName(style.fontName, style.fontSize)) + ink +
           "caret-color:" + cssColor(style.textColor) +
           ";opacity:1;filter:none;}"
           "scrolledwindow textview{background:none;}"
           ":disabled,:disabled text{color:" +
           cssColor(disabled) +
           ";}"
           "placeholder,.placeholder{color:" +
           cssColor(style.placeholderColor) +
           ";}"
           "selection{background-color:transparent;" +
           ink +
           "}"
           "text:focus-within>selection,textview:focus-within text>selection,"
           "selection:focus-within{background-color:" +
           cssColor(style.selectionColor) + ";" + ink + "}";
}

void addToAll(GtkWidget* widget, GtkStyleProvider* provider) {
    gtk_style_context_add_provider(gtk_widget_get_style_context(widget), provider,
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        addToAll(child, provider);
    }
}

}  // namespace

GTKTextStyle::GTKTextStyle() : provider_(Gtk::CssProvider::create()) {}

void GTKTextStyle::apply(const NSTextFieldStyle& style, Gtk::Widget& widget) {
    if (style_ != style) {
        style_ = style;
        provider_->load_from_data(cssOf(style));
    }
    // GTK replaces a provider that a widget has already.
    addToAll(widget.gobj(), GTK_STYLE_PROVIDER(provider_->gobj()));
}

std::size_t toByte(const std::string& text, int character) {
    return static_cast<std::size_t>(g_utf8_offset_to_pointer(text.c_str(), character) -
                                    text.c_str());
}

int toCharacter(const std::string& text, std::size_t byte) {
    return static_cast<int>(g_utf8_pointer_to_offset(text.c_str(), text.c_str() + byte));
}

}  // namespace orvane::platform
