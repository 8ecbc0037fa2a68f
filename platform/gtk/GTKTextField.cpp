#include "platform/gtk/GTKTextField.h"

#include <glib.h>

#include <memory>

#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

namespace {

// Converts text to what the widget can show: well-formed UTF-8, up to the first zero byte.
Glib::ustring showable(const std::string& text) {
    const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(text.c_str(), -1),
                                                         &g_free);
    return valid.get();
}

}  // namespace

GTKTextField::GTKTextField(NSTextField& field) : field_(field) {
    // The view decides the width: remove the entry's own minimum.
    entry_.set_width_chars(0);
    entry_.set_max_width_chars(0);
    entry_.signal_changed().connect([this] {
        // A text that the widget cannot show unchanged must not replace what the application set.
        if (!taking_) {
            field_.setStringValue(entry_.get_text().raw());
        }
    });
}

void GTKTextField::stateDidChange() {
    const Glib::ustring text = showable(field_.stringValue());
    if (entry_.get_text().raw() != text.raw()) {
        taking_ = true;
        entry_.set_text(text);
        taking_ = false;
    }
    entry_.set_sensitive(field_.isEnabled());
}

}  // namespace orvane::platform
