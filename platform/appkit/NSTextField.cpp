#include "platform/appkit/NSTextField.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSPasteboard.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/appkit/NSTextCommands.h"
#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextFieldPicture.h"
#include "platform/appkit/NSTextLayout.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coretext/validText.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

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
        field_.press(point, clicks_, (event.modifierFlags & kNSEventModifierShift) != 0);
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
    const CGPoint place = picture_->toLayout(point);
    const NSTextLayout& layout = picture_->layout();
    const std::size_t position = layout.positionAt(place);
    if (clicks == 1) {
        editor_->moveTo(position, extends);
    } else if (clicks == 2) {
        // The word that is under the pointer, also beyond the middle of its last character.
        const bool isAfter = layout.caretAt(position).origin.x > place.x;
        const CFRange line = layout.lineAt(position);
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
    const CGPoint place = picture_->toLayout(point);
    const std::size_t position = picture_->layout().positionAt(place);
    // What the press has selected stays selected.
    if (position < pressedBegin_) {
        editor_->setSelection(pressedEnd_, position);
    } else {
        editor_->setSelection(pressedBegin_, std::max(position, pressedEnd_));
    }
    changed();
}

// ---- state ----

NSTextField::NSTextField(Kind kind)
    : editor_(std::make_unique<NSTextEditor>(editorKind(kind))),
      picture_(std::make_unique<NSTextFieldPicture>(*this)),
      commands_(std::make_unique<NSTextCommands>(*this, *editor_, *picture_)) {
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

void NSTextField::changed() {
    commands_->forgetColumn();
    show();
}

void NSTextField::show() {
    picture_->invalidate();
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
        callTextChanged();
    }
}

void NSTextField::callTextChanged() {
    if (const auto handler = handlers_.textChanged) {  // a copy: it may be replaced meanwhile
        handler();
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
    switch (commands_->keyDown(event)) {
        case NSTextCommands::Effect::None:
            return false;
        case NSTextCommands::Effect::Handled:
            break;
        case NSTextCommands::Effect::Moved:
            show();
            break;
        case NSTextCommands::Effect::Edited:
            show();
            callTextChanged();
            break;
        case NSTextCommands::Effect::Paste:
            paste();
            break;
        case NSTextCommands::Effect::Committed:
            commit();
            break;
    }
    return true;
}

void NSTextField::paste() {
    const auto insert = [](NSTextField& field, const std::string& text) {
        if (!text.empty() && field.editable_ && field.editor_->insert(text)) {
            field.changed();
            field.callTextChanged();
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

void NSTextField::drawRect(const CGRect& dirty) {
    if (CGContext* const canvas = NSGraphicsContext::currentGraphicsPort()) {
        picture_->draw(*canvas, dirty);
    }
}

}  // namespace orvane::platform
