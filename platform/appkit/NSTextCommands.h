#pragma once

#include <functional>

namespace orvane::platform {

class NSTextEditor;
class NSTextField;
class NSTextFieldPicture;
struct NSEvent;

// What the keys do in a text field that edits its text itself: they run the commands that GTK's
// text widgets have on the same keys, on the field's NSTextEditor. NSTextField owns it, and calls
// its handlers according to the effect.
class NSTextCommands {
public:
    // What a key has done.
    enum class Effect {
        None,       // it is no command of a text field
        Handled,    // it is one, but has changed nothing that the field shows
        Moved,      // the caret or the selection was set
        Edited,     // the user has changed the text
        Paste,      // the field must insert the clipboard
        Committed,  // Enter
    };

    // `field` owns this object and the others.
    NSTextCommands(const NSTextField& field, NSTextEditor& editor, NSTextFieldPicture& picture)
        : field_(field), editor_(editor), picture_(picture) {}

    // Runs the command of a key that was pressed. The text is only changed if it is editable.
    Effect keyDown(const NSEvent& event);
    // Must be called when something else has moved the caret or changed what is shown.
    void forgetColumn() { column_ = -1; }

private:
    Effect edit(const std::function<bool(NSTextEditor&)>& change);
    Effect moveByLines(const NSEvent& event);
    Effect move(const NSEvent& event);
    Effect deleteText(const NSEvent& event);
    // The commands of the clipboard, of the history, and of the whole text.
    Effect runCommand(const NSEvent& event);
    Effect type(const NSEvent& event);
    void moveToLineEnd(bool toEnd, bool extends);

    const NSTextField& field_;
    NSTextEditor& editor_;
    NSTextFieldPicture& picture_;
    double column_ = -1;  // the x at which Up and Down stay; negative for the caret's place
};

}  // namespace orvane::platform
