#include "platform/appkit/NSTextField.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSPasteboard.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextLayout.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/coretext/validText.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

using Direction = NSTextEditor::Direction;
using Unit = NSTextEditor::Unit;

namespace {

constexpr double kCaretWidth = 1;
// Presses that follow one another within this time and distance are one click, as in GTK.
constexpr double kDoubleClickTime = 0.4;  // seconds
constexpr double kDoubleClickDistance = 5;

NSTextEditor::Kind editorKind(NSTextField::Kind kind) {
    switch (kind) {
        case NSTextField::Kind::Multiline:
            return NSTextEditor::Kind::Multiline;
        case NSTextField::Kind::Secret:
            return NSTextEditor::Kind::Secret;
        case NSTextField::Kind::Line:
            break;
    }
    return NSTextEditor::Kind::Line;
}

bool isShift(const NSEvent& event) {
    return (event.modifierFlags & kNSEventModifierShift) != 0;
}

bool isControl(const NSEvent& event) {
    return (event.modifierFlags & kNSEventModifierControl) != 0;
}

void fillRect(CGContext& canvas, const CGRect& rect, const CGColor& color) {
    canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
    canvas.addRect(rect);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

}  // namespace

// ---- the pointer ----

// Places the caret at a press and selects while the button is held down: characters, words after
// two presses, paragraphs after three.
class NSTextField::Pointer final : public NSGestureRecognizer {
public:
    explicit Pointer(NSTextField& field) : field_(field) {}

    void mouseDown(const NSEvent& event) override {
        if (!field_.isEnabled()) {
            setState(NSGestureRecognizerState::Failed);
            return;
        }
        const CGPoint point = locationInView(event, field_);
        const bool continues =
            event.timestamp - lastTime_ < kDoubleClickTime &&
            std::hypot(point.x - lastPoint_.x, point.y - lastPoint_.y) < kDoubleClickDistance;
        clicks_ = continues ? clicks_ % 3 + 1 : 1;
        lastTime_ = event.timestamp;
        lastPoint_ = point;
        field_.press(point, clicks_, isShift(event));
        setState(NSGestureRecognizerState::Began);
    }
    void mouseDragged(const NSEvent& event) override { field_.drag(locationInView(event, field_)); }
    void mouseUp(const NSEvent&) override { setState(NSGestureRecognizerState::Ended); }

private:
    NSTextField& field_;
    double lastTime_ = -kDoubleClickTime;
    CGPoint lastPoint_;
    int clicks_ = 0;
};

void NSTextField::press(CGPoint point, int clicks, bool extends) {
    const CGPoint place{point.x + scrolled_.x, point.y + scrolled_.y};
    const std::size_t position = layout().positionAt(place);
    if (clicks == 1) {
        editor_->moveTo(position, extends);
    } else if (clicks == 2) {
        // The word that is under the pointer, also beyond the middle of its last character.
        const bool isAfter = layout().caretAt(position).origin.x > place.x;
        const CFRange line = layout().lineAt(position);
        editor_->selectWord(isAfter && position > line.location ? position - 1 : position);
    } else {
        editor_->selectParagraph(position);
    }
    const NSTextEditor::Selection& selection = editor_->selection();
    pressedBegin_ = clicks == 1 ? selection.anchor : selection.begin();
    pressedEnd_ = clicks == 1 ? selection.anchor : selection.end();
    changed();
}

void NSTextField::drag(CGPoint point) {
    const std::size_t position =
        layout().positionAt({point.x + scrolled_.x, point.y + scrolled_.y});
    // What the press has selected stays selected.
    if (position < pressedBegin_) {
        editor_->setSelection(pressedEnd_, position);
    } else {
        editor_->setSelection(pressedBegin_, std::max(position, pressedEnd_));
    }
    changed();
}

// ---- state ----

NSTextField::NSTextField(Kind kind) : editor_(std::make_unique<NSTextEditor>(editorKind(kind))) {
    addGestureRecognizer(std::make_shared<Pointer>(*this));
}

NSTextField::~NSTextField() = default;

NSTextField::Kind NSTextField::kind() const {
    switch (editor_->kind()) {
        case NSTextEditor::Kind::Multiline:
            return Kind::Multiline;
        case NSTextEditor::Kind::Secret:
            return Kind::Secret;
        case NSTextEditor::Kind::Line:
            break;
    }
    return Kind::Line;
}

void NSTextField::setHandlers(Handlers handlers) {
    handlers_ = std::move(handlers);
}

// Must be called after every change of what the field shows.
void NSTextField::changed() {
    layout_.reset();
    wantedX_ = -1;
    ++revision_;
    setNeedsDisplayInRect(bounds());
    stateDidChange();
}

const std::string& NSTextField::stringValue() const {
    return editor_->text();
}

void NSTextField::setStringValue(const std::string& value) {
    if (value == editor_->text()) {
        return;
    }
    const std::string before = editor_->text();
    editor_->setText(value);
    const std::size_t most =
        kind() == Kind::Multiline ? NSTextEditor::kMostBytes : NSTextEditor::kMostBytesOfLine;
    if (value.size() > most) {
        NSLog("NSTextField: a text of %zu bytes was cut to %zu bytes", value.size(),
              editor_->text().size());
    } else if (!isValidText(value)) {
        NSLog(
            "NSTextField: a text contains bytes that are not UTF-8, or zero bytes; they are shown "
            "as replacement characters");
    }
    if (editor_->text() != before) {
        changed();
    }
}

void NSTextField::setPlaceholder(const std::string& placeholder) {
    const NSTextEditor rules(editor_->kind());
    if (std::string valid = rules.acceptable(placeholder); placeholder_ != valid) {
        placeholder_ = std::move(valid);
        changed();
    }
}

void NSTextField::setStyle(const NSTextFieldStyle& style) {
    if (style_ != style) {
        style_ = style;
        changed();
    }
}

std::size_t NSTextField::maximumLength() const {
    return editor_->maximumLength();
}

void NSTextField::setMaximumLength(std::size_t characters) {
    if (editor_->maximumLength() != characters) {
        editor_->setMaximumLength(characters);
        changed();
    }
}

void NSTextField::setPurpose(NSTextPurpose purpose) {
    if (purpose_ != purpose) {
        purpose_ = purpose;
        changed();
    }
}

void NSTextField::setEnabled(bool enabled) {
    if (enabled_ != enabled) {
        enabled_ = enabled;
        changed();
        if (!enabled && isFocused()) {
            window()->makeFirstResponder(nullptr);
        }
    }
}

void NSTextField::setEditable(bool editable) {
    if (editable_ != editable) {
        editable_ = editable;
        changed();
    }
}

std::size_t NSTextField::selectionAnchor() const {
    return editor_->selection().anchor;
}

std::size_t NSTextField::caret() const {
    return editor_->selection().caret;
}

void NSTextField::setSelection(std::size_t anchor, std::size_t caret) {
    const NSTextEditor::Selection before = editor_->selection();
    editor_->setSelection(anchor, caret);
    if (editor_->selection() != before) {
        changed();
    }
}

bool NSTextField::isFocused() const {
    return window() != nullptr && window()->firstResponder() == this;
}

void NSTextField::didBecomeKeyView() {
    if (kind() != Kind::Multiline) {
        setSelection(0, stringValue().size());
    }
}

void NSTextField::didBecomeFirstResponder() {
    changed();
    if (const auto handler = handlers_.focusChanged) {  // a copy: it may be replaced meanwhile
        handler();
    }
}

void NSTextField::didResignFirstResponder() {
    didBecomeFirstResponder();
}

void NSTextField::takeInput(const std::string& text, std::size_t anchor, std::size_t caret) {
    const bool isChanged = text != editor_->text();
    if (isChanged) {
        editor_->setText(text);
    }
    setSelection(anchor, caret);
    if (isChanged) {
        changed();
        if (const auto handler = handlers_.textChanged) {
            handler();
        }
    }
}

void NSTextField::commit() {
    if (const auto handler = handlers_.committed) {
        handler();
    }
}

// ---- keys ----

bool NSTextField::keyDown(const NSEvent& event) {
    if (!enabled_) {
        return false;
    }
    if (event.key == "Return" || event.key == "KP_Enter") {
        if (kind() == Kind::Multiline && !isControl(event)) {
            return changeByUser([](NSTextEditor& editor) { return editor.insert("\n"); });
        }
        commit();
        return true;
    }
    if (moveByKey(event) || deleteByKey(event) || runCommand(event)) {
        return true;
    }
    constexpr unsigned commands =
        kNSEventModifierControl | kNSEventModifierAlt | kNSEventModifierSuper;
    if (event.characters.empty() || (event.modifierFlags & commands) != 0) {
        return false;
    }
    return changeByUser([&](NSTextEditor& editor) { return editor.insert(event.characters); });
}

// Returns true: the key is handled even if it changes nothing.
bool NSTextField::changeByUser(const std::function<bool(NSTextEditor&)>& change) {
    if (editable_ && change(*editor_)) {
        changed();
        if (const auto handler = handlers_.textChanged) {
            handler();
        }
    }
    return true;
}

bool NSTextField::moveByKey(const NSEvent& event) {
    const bool extends = isShift(event);
    const bool isFar = isControl(event);
    const std::string& key = event.key;
    const bool isMultiline = kind() == Kind::Multiline;
    if (key == "Left" || key == "KP_Left") {
        editor_->move(isFar ? Unit::Word : Unit::Character, Direction::Backward, extends);
    } else if (key == "Right" || key == "KP_Right") {
        editor_->move(isFar ? Unit::Word : Unit::Character, Direction::Forward, extends);
    } else if (key == "Home" || key == "End" || key == "KP_Home" || key == "KP_End") {
        const bool toEnd = key.ends_with("End");
        if (isMultiline && !isFar) {
            moveToLineEnd(toEnd, extends);
        } else {
            editor_->move(Unit::Document, toEnd ? Direction::Forward : Direction::Backward,
                          extends);
        }
    } else if (isMultiline && isFar && (key == "Up" || key == "Down")) {
        editor_->move(Unit::Paragraph, key == "Up" ? Direction::Backward : Direction::Forward,
                      extends);
    } else if (isMultiline && (key == "Up" || key == "Down")) {
        moveVertically(key == "Up" ? -1 : 1, extends);
        return true;
    } else if (isMultiline && (key == "Page_Up" || key == "Page_Down")) {
        const double lines = bounds().size.height / layout().caretAt(caret()).size.height - 1;
        moveVertically(std::max(lines, 1.0) * (key == "Page_Up" ? -1 : 1), extends);
        return true;
    } else {
        return false;
    }
    changed();
    return true;
}

void NSTextField::moveToLineEnd(bool toEnd, bool extends) {
    const CFRange line = layout().lineAt(caret());
    std::size_t position = line.location;
    if (toEnd) {
        // The position after a line that is wrapped is the beginning of the next line.
        const CFRange paragraph = editor_->paragraphAt(line.end());
        const bool isWrapped = line.end() > paragraph.location && line.end() < paragraph.end();
        position = isWrapped && line.length > 0 ? editor_->atOrBefore(line.end() - 1) : line.end();
    }
    editor_->moveTo(position, extends);
}

// Keeps the distance from the left side while the caret moves over shorter lines.
void NSTextField::moveVertically(double lines, bool extends) {
    const CGRect from = layout().caretAt(caret());
    const double x = wantedX_ >= 0 ? wantedX_ : from.origin.x;
    const double y = from.origin.y + from.size.height * (0.5 + lines);
    std::size_t position = layout().positionAt({x, y});
    if (y < 0) {
        position = 0;
    } else if (y > layout().size().height) {
        position = stringValue().size();
    }
    editor_->moveTo(position, extends);
    changed();
    wantedX_ = x;
}

bool NSTextField::deleteByKey(const NSEvent& event) {
    const bool isFar = isControl(event);
    const std::string& key = event.key;
    if (key == "BackSpace") {
        const Unit unit = isFar ? isShift(event) ? Unit::Paragraph : Unit::Word : Unit::Character;
        return changeByUser(
            [&](NSTextEditor& editor) { return editor.deleteText(unit, Direction::Backward); });
    }
    if ((key == "Delete" || key == "KP_Delete") && (isFar || !isShift(event))) {
        const Unit unit = isFar ? isShift(event) ? Unit::Paragraph : Unit::Word : Unit::Character;
        return changeByUser(
            [&](NSTextEditor& editor) { return editor.deleteText(unit, Direction::Forward); });
    }
    return false;
}

// The commands of the clipboard, of the history, and of the whole text.
bool NSTextField::runCommand(const NSEvent& event) {
    const std::string& key = event.key;
    const bool isCopy = isControl(event) && (key == "c" || key == "Insert");
    const bool isCut = (isControl(event) && key == "x") || (isShift(event) && key == "Delete");
    const bool isPaste = (isControl(event) && key == "v") || (isShift(event) && key == "Insert");
    if (isCopy || isCut) {
        if (const std::string text = editor_->selectedText(); !text.empty()) {
            NSDesktop::current().copyText(text);
            if (isCut) {
                changeByUser([](NSTextEditor& editor) { return editor.insert({}); });
            }
        }
        return true;
    }
    if (isPaste) {
        paste();
        return true;
    }
    if (!isControl(event)) {
        return false;
    }
    if (key == "a" || key == "slash") {
        if (isShift(event)) {
            setSelection(caret(), caret());
        } else {
            setSelection(0, stringValue().size());
        }
        return true;
    }
    if (key == "z" && !isShift(event)) {
        return changeByUser([](NSTextEditor& editor) { return editor.undo(); });
    }
    if (key == "y" || key == "z") {
        return changeByUser([](NSTextEditor& editor) { return editor.redo(); });
    }
    return false;
}

void NSTextField::paste() {
    const auto insert = [](NSTextField& field, const std::string& text) {
        if (!text.empty()) {
            field.changeByUser([&](NSTextEditor& editor) { return editor.insert(text); });
        }
    };
    // The clipboard in memory is read at once, so that a script's next keys come after the text.
    NSDesktop& desktop = NSDesktop::current();
    if (dynamic_cast<NSScriptedDesktop*>(&desktop) != nullptr) {
        insert(*this, NSPasteboard::generalPasteboard().string());
        return;
    }
    desktop.pasteText([insert, self = weak_from_this()](const std::string& text) {
        if (const auto field = std::static_pointer_cast<NSTextField>(self.lock())) {
            insert(*field, text);
        }
    });
}

// ---- painting ----

const NSTextLayout& NSTextField::layout() {
    if (!layout_ || laidOutWidth_ != bounds().size.width) {
        const NSTextLayout::Kind kinds[] = {NSTextLayout::Kind::Line, NSTextLayout::Kind::Wrapped,
                                            NSTextLayout::Kind::Dots};
        laidOutWidth_ = bounds().size.width;
        layout_ = std::make_unique<NSTextLayout>(kinds[static_cast<int>(kind())], stringValue(),
                                                 style_, enabled_, laidOutWidth_);
        scrollToCaret();
    }
    return *layout_;
}

void NSTextField::scrollToCaret() {
    const CGSize size = bounds().size;
    const CGRect caret = layout_->caretAt(editor_->selection().caret);
    const CGSize text = layout_->size();
    // Along an axis: as far as necessary, and no farther than the text goes.
    const auto scroll = [](double from, double to, double room, double extent, double& offset) {
        offset = std::max(offset, to - room);
        offset = std::min(offset, from);
        offset = std::clamp(offset, 0.0, std::max(extent - room, 0.0));
    };
    if (kind() == Kind::Multiline) {
        scrolled_.x = 0;
        scroll(caret.origin.y, caret.origin.y + caret.size.height, size.height, text.height,
               scrolled_.y);
    } else {
        scroll(caret.origin.x, caret.origin.x + kCaretWidth, size.width, text.width + kCaretWidth,
               scrolled_.x);
        scrolled_.y = std::round((caret.size.height - size.height) / 2);  // in the middle
    }
}

void NSTextField::drawRect(const CGRect& dirty) {
    CGContext* const canvas = NSGraphicsContext::currentGraphicsPort();
    if (canvas == nullptr) {
        return;
    }
    if (style_.backgroundColor.alpha > 0) {
        fillRect(*canvas, bounds(), style_.backgroundColor);
    }
    const NSTextLayout& text = layout();
    const CGSavedState state(*canvas);
    canvas->clipToRect(bounds());
    canvas->translateCTM(-scrolled_.x, -scrolled_.y);
    const double top = dirty.origin.y + scrolled_.y;
    const double bottom = top + dirty.size.height;
    const NSTextEditor::Selection& selection = editor_->selection();
    if (isFocused() && !selection.isEmpty()) {
        for (const CGRect& rect :
             text.rectsOf({selection.begin(), selection.end() - selection.begin()})) {
            fillRect(*canvas, rect, style_.selectionColor);
        }
    }
    if (stringValue().empty() && !placeholder_.empty()) {
        NSTextFieldStyle style = style_;
        style.textColor = style_.placeholderColor;
        const auto kindOfLayout =
            kind() == Kind::Multiline ? NSTextLayout::Kind::Wrapped : NSTextLayout::Kind::Line;
        NSTextLayout(kindOfLayout, placeholder_, style, enabled_, bounds().size.width)
            .draw(*canvas, top, bottom);
    } else {
        text.draw(*canvas, top, bottom);
    }
    if (isFocused() && selection.isEmpty() && editable_) {
        CGRect caret = text.caretAt(selection.caret);
        caret.origin.x = std::min(std::round(caret.origin.x),
                                  std::floor(scrolled_.x + bounds().size.width) - kCaretWidth);
        caret.size.width = kCaretWidth;
        fillRect(*canvas, caret, style_.textColor);
    }
}

}  // namespace orvane::platform
