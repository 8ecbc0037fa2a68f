#include "platform/gtk/GTKSecretField.h"

#include <algorithm>

#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

namespace {

// What the widget contains; it shows the dots of the theme.
constexpr std::string_view kDot = "\xE2\x97\x8F";

}  // namespace

GTKSecretField::GTKSecretField(NSTextField& field) : GTKEditableField(field) {
    attach(GTK_EDITABLE(entry_.gobj()));
    gtk_editable_set_enable_undo(editable_, FALSE);
}

std::size_t GTKSecretField::byteOfDot(int dot) const {
    std::size_t byte = 0;
    for (; dot > 0 && byte < secret_.text().size(); --dot) {
        byte = secret_.nextCharacter(byte);
    }
    return byte;
}

int GTKSecretField::dotOfByte(std::size_t byte) const {
    int dot = 0;
    for (std::size_t at = 0; at < byte && at < secret_.text().size(); ++dot) {
        at = secret_.nextCharacter(at);
    }
    return dot;
}

void GTKSecretField::fitDots(int position) {
    const int present = gtk_text_get_text_length(GTK_TEXT(gtk_editable_get_delegate(editable_)));
    const int wanted = dotOfByte(secret_.text().size());
    if (wanted > present) {
        std::string dots;
        for (int i = present; i < wanted; ++i) {
            dots += kDot;
        }
        insertIntoWidget(dots, std::min(position, present));
    } else if (wanted < present) {
        const int from = std::min(position, wanted);
        deleteFromWidget(from, from + present - wanted);
    }
}

void GTKSecretField::showText() {
    if (secret_.text() != field_.stringValue()) {
        secret_.setText(field_.stringValue());
        fitDots(0);
    }
    selectInWidget({dotOfByte(field_.selectionAnchor()), dotOfByte(field_.caret())});
}

void GTKSecretField::takeText() {
    const Range range = widgetSelection();
    field_.takeInput(secret_.text(), byteOfDot(range.anchor), byteOfDot(range.caret));
}

int GTKSecretField::insertText(const std::string& text, int position) {
    secret_.setMaximumLength(field_.maximumLength());
    const std::size_t at = byteOfDot(position);
    secret_.setSelection(at, at);
    secret_.insert(text);
    fitDots(position);
    return dotOfByte(secret_.selection().caret);
}

void GTKSecretField::deleteText(int from, int to) {
    secret_.setSelection(byteOfDot(from), byteOfDot(to));
    if (!secret_.selection().isEmpty()) {
        secret_.insert({});
    }
    fitDots(from);
}

}  // namespace orvane::platform
