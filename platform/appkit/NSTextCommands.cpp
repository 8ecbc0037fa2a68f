#include "platform/appkit/NSTextCommands.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/appkit/NSDesktop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSTextFieldPicture.h"
#include "platform/appkit/NSTextLayout.h"

namespace orvane::platform {

using Direction = NSTextEditor::Direction;
using Effect = NSTextCommands::Effect;
using Unit = NSTextEditor::Unit;

namespace {

bool isShift(const NSEvent& event) {
    return (event.modifierFlags & kNSEventModifierShift) != 0;
}

bool isControl(const NSEvent& event) {
    return (event.modifierFlags & kNSEventModifierControl) != 0;
}

}  // namespace

Effect NSTextCommands::keyDown(const NSEvent& event) {
    if (event.key == "Return" || event.key == "KP_Enter") {
        if (field_.kind() != NSTextField::Kind::Multiline || isControl(event)) {
            return Effect::Committed;
        }
        return edit([](NSTextEditor& editor) { return editor.insert("\n"); });
    }
    for (const auto command :
         {&NSTextCommands::moveByLines, &NSTextCommands::move, &NSTextCommands::deleteText,
          &NSTextCommands::runCommand, &NSTextCommands::type}) {
        if (const Effect effect = (this->*command)(event); effect != Effect::None) {
            return effect;
        }
    }
    return Effect::None;
}

Effect NSTextCommands::edit(const std::function<bool(NSTextEditor&)>& change) {
    if (!field_.isEditable() || !change(editor_)) {
        return Effect::Handled;
    }
    forgetColumn();
    return Effect::Edited;
}

Effect NSTextCommands::type(const NSEvent& event) {
    constexpr unsigned commands =
        kNSEventModifierControl | kNSEventModifierAlt | kNSEventModifierSuper;
    if (event.characters.empty() || (event.modifierFlags & commands) != 0) {
        return Effect::None;
    }
    return edit([&](NSTextEditor& editor) { return editor.insert(event.characters); });
}

// Keeps the distance from the left side while the caret moves over shorter lines.
Effect NSTextCommands::moveByLines(const NSEvent& event) {
    const std::string& key = event.key;
    const bool isPage = key == "Page_Up" || key == "Page_Down";
    const bool isLine = !isControl(event) && (key == "Up" || key == "Down");
    if (field_.kind() != NSTextField::Kind::Multiline || (!isPage && !isLine)) {
        return Effect::None;
    }
    const NSTextLayout& layout = picture_.layout();
    const CGRect from = layout.caretAt(field_.caret());
    const double lines =
        isPage ? std::max(field_.bounds().size.height / from.size.height - 1, 1.0) : 1;
    const double x = column_ >= 0 ? column_ : from.origin.x;
    const double y =
        from.origin.y + from.size.height * (0.5 + (key.ends_with("Up") ? -lines : lines));
    std::size_t position = layout.positionAt({x, y});
    if (y < 0) {
        position = 0;
    } else if (y > layout.size().height) {
        position = editor_.text().size();
    }
    editor_.moveTo(position, isShift(event));
    column_ = x;
    return Effect::Moved;
}

Effect NSTextCommands::move(const NSEvent& event) {
    const bool extends = isShift(event);
    const bool isFar = isControl(event);
    const std::string& key = event.key;
    const bool isMultiline = field_.kind() == NSTextField::Kind::Multiline;
    if (key == "Left" || key == "KP_Left") {
        editor_.move(isFar ? Unit::Word : Unit::Character, Direction::Backward, extends);
    } else if (key == "Right" || key == "KP_Right") {
        editor_.move(isFar ? Unit::Word : Unit::Character, Direction::Forward, extends);
    } else if (key == "Home" || key == "End" || key == "KP_Home" || key == "KP_End") {
        const bool toEnd = key.ends_with("End");
        if (isMultiline && !isFar) {
            moveToLineEnd(toEnd, extends);
        } else {
            editor_.move(Unit::Document, toEnd ? Direction::Forward : Direction::Backward, extends);
        }
    } else if (isMultiline && isFar && (key == "Up" || key == "Down")) {
        editor_.move(Unit::Paragraph, key == "Up" ? Direction::Backward : Direction::Forward,
                     extends);
    } else {
        return Effect::None;
    }
    forgetColumn();
    return Effect::Moved;
}

void NSTextCommands::moveToLineEnd(bool toEnd, bool extends) {
    const CFRange line = picture_.layout().lineAt(field_.caret());
    std::size_t position = line.location;
    if (toEnd) {
        // The position after a line that is wrapped is the beginning of the next line.
        const CFRange paragraph = editor_.paragraphAt(line.end());
        const bool isWrapped = line.end() > paragraph.location && line.end() < paragraph.end();
        position = isWrapped && line.length > 0 ? editor_.atOrBefore(line.end() - 1) : line.end();
    }
    editor_.moveTo(position, extends);
}

Effect NSTextCommands::deleteText(const NSEvent& event) {
    const bool isFar = isControl(event);
    const bool isBackward = event.key == "BackSpace";
    const bool isForward =
        (event.key == "Delete" || event.key == "KP_Delete") && (isFar || !isShift(event));
    if (!isBackward && !isForward) {
        return Effect::None;
    }
    const Unit unit = isFar ? isShift(event) ? Unit::Paragraph : Unit::Word : Unit::Character;
    return edit([&](NSTextEditor& editor) {
        return editor.deleteText(unit, isBackward ? Direction::Backward : Direction::Forward);
    });
}

Effect NSTextCommands::runCommand(const NSEvent& event) {
    const std::string& key = event.key;
    const bool isCopy = isControl(event) && (key == "c" || key == "Insert");
    const bool isCut = (isControl(event) && key == "x") || (isShift(event) && key == "Delete");
    if (isCopy || isCut) {
        const std::string text = editor_.selectedText();
        if (text.empty()) {
            return Effect::Handled;
        }
        NSDesktop::current().copyText(text);
        return isCut ? edit([](NSTextEditor& editor) { return editor.insert({}); })
                     : Effect::Handled;
    }
    if ((isControl(event) && key == "v") || (isShift(event) && key == "Insert")) {
        return Effect::Paste;
    }
    if (!isControl(event)) {
        return Effect::None;
    }
    if (key == "a" || key == "slash") {
        const NSTextEditor::Selection before = editor_.selection();
        editor_.setSelection(isShift(event) ? before.caret : 0,
                             isShift(event) ? before.caret : editor_.text().size());
        if (editor_.selection() == before) {
            return Effect::Handled;
        }
        forgetColumn();
        return Effect::Moved;
    }
    if (key == "z" && !isShift(event)) {
        return edit([](NSTextEditor& editor) { return editor.undo(); });
    }
    if (key == "y" || key == "z") {
        return edit([](NSTextEditor& editor) { return editor.redo(); });
    }
    return Effect::None;
}

}  // namespace orvane::platform
