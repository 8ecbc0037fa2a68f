#include "platform/gtk/GTKLineField.h"

#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextField.h"

namespace orvane::platform {

GTKLineField::GTKLineField(NSTextField& field) : GTKEditableField(field) {
    attach(GTK_EDITABLE(entry_.gobj()));
}

void GTKLineField::showText() {
    const std::string& text = field_.stringValue();
    if (widgetText() != text) {
        gtk_editable_set_text(editable_, text.c_str());
    }
    selectInWidget(
        {toCharacter(text, field_.selectionAnchor()), toCharacter(text, field_.caret())});
}

void GTKLineField::takeText() {
    const std::string text = widgetText();
    const Range range = widgetSelection();
    field_.takeInput(text, toByte(text, range.anchor), toByte(text, range.caret));
}

int GTKLineField::insertText(const std::string& text, int position) {
    // The widget may be ahead of the field: between the two halves of a replacement.
    NSTextEditor rules(NSTextEditor::Kind::Line);
    if (!isShowing_) {
        rules.setMaximumLength(field_.maximumLength());
        rules.setText(widgetText());
    }
    const std::size_t at = toByte(rules.text(), isShowing_ ? 0 : position);
    return insertIntoWidget(rules.fitting(rules.acceptable(text), {at, 0}), position);
}

}  // namespace orvane::platform
