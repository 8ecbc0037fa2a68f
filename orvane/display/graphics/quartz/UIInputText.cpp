#include "orvane/display/graphics/quartz/UIInputText.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "orvane/display/graphics/quartz/Color.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display::graphics::quartz {

using platform::NSTextField;
using platform::NSTextFieldStyle;

namespace {

class TextFieldLayer final : public native::NativeLayer {
public:
    explicit TextFieldLayer(NSTextField::Kind kind) : kind_(kind) {}

    // The control handles the pointer.
    bool isNeedsGestureRecognizer() const override { return false; }

protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override {
        return std::make_shared<NSTextField>(kind_);
    }
    void validateLayer() override {
        NativeLayer::validateLayer();
        if (!getObjects().empty()) {
            if (const auto text =
                    std::dynamic_pointer_cast<UIInputText>(getObjects().front().lock())) {
                text->updateFontSize();
            }
        }
    }

private:
    NSTextField::Kind kind_;
};

// Returns the handler of an event of the user's: it notifies the object's listeners.
template <typename MakeEvent>
std::function<void()> notifying(std::weak_ptr<DisplayObject> weak, MakeEvent makeEvent) {
    return [weak = std::move(weak), makeEvent] {
        const auto text = std::dynamic_pointer_cast<UIInputText>(weak.lock());
        if (!text) {
            return;
        }
        // The desktop's event loop must not see exceptions.
        try {
            text->notify(makeEvent(*text));
        } catch (const std::exception& exception) {
            platform::NSLog("InputText: a listener has thrown: %s", exception.what());
        } catch (...) {
            platform::NSLog("InputText: a listener has thrown something that is no std::exception");
        }
    };
}

// An alpha of 0 is transparent here: the ground is that at first.
platform::CGColor colorOf(unsigned argb) {
    platform::CGColor color = Color::fromArgb(argb).cgColor();
    color.alpha = (argb >> 24) == 0 ? 0 : color.alpha;
    return color;
}

}  // namespace

UIInputText::UIInputText(bool multiline, bool editable, bool secure, int maximumLength)
    : multiline_(multiline && !secure),
      secure_(secure),
      initiallyEditable_(editable),
      initialMaximumLength_(maximumLength) {}

std::shared_ptr<native::NativeLayer> UIInputText::createLayer() {
    return std::make_shared<TextFieldLayer>(secure_      ? NSTextField::Kind::Secret
                                            : multiline_ ? NSTextField::Kind::Multiline
                                                         : NSTextField::Kind::Line);
}

void UIInputText::init() {
    NativeObject::init();
    const std::weak_ptr<DisplayObject> self = shared_from_this();
    withField([&](NSTextField& field) {
        field.setEditable(initiallyEditable_);
        field.setHandlers(
            {notifying(self, [](UIInputText&) { return ChangeEvent(); }),
             notifying(self, [](UIInputText&) { return CommitEvent(); }),
             notifying(self, [](UIInputText& text) { return FocusEvent{text.isFocused()}; })});
    });
    setMaximumLength(initialMaximumLength_);
}

void UIInputText::withField(const std::function<void(NSTextField&)>& function) const {
    dispatch_ui([&] {
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(getObjectHandler())) {
            function(*field);
        }
    });
}

void UIInputText::changeStyle(const std::function<void(NSTextFieldStyle&)>& change) {
    withField([&](NSTextField& field) {
        NSTextFieldStyle style = field.style();
        change(style);
        field.setStyle(style);
    });
}

// ---- the text ----

void UIInputText::setContent(const std::string& content) {
    withField([&](NSTextField& field) { field.setStringValue(content); });
}

std::string UIInputText::getContent() const {
    std::string content;
    withField([&](NSTextField& field) { content = field.stringValue(); });
    return content;
}

void UIInputText::setPlaceholder(const std::string& placeholder) {
    withField([&](NSTextField& field) { field.setPlaceholder(placeholder); });
}

void UIInputText::setMaximumLength(int characters) {
    if (characters < 0) {
        platform::NSLog("InputText: the maximum length %d was refused", characters);
        return;
    }
    withField(
        [&](NSTextField& field) { field.setMaximumLength(static_cast<std::size_t>(characters)); });
}

int UIInputText::getMaximumLength() const {
    std::size_t characters = 0;
    withField([&](NSTextField& field) { characters = field.maximumLength(); });
    return static_cast<int>(characters);
}

void UIInputText::setPurpose(Purpose purpose) {
    // The platform's purposes are in the same order.
    withField([&](NSTextField& field) {
        field.setPurpose(static_cast<platform::NSTextPurpose>(purpose));
    });
}

// ---- the look ----

void UIInputText::setFont(const std::string& name) {
    changeStyle([&](NSTextFieldStyle& style) { style.fontName = name; });
}

void UIInputText::setTextSize(float size) {
    if (!std::isfinite(size) || size <= 0) {
        platform::NSLog("InputText: the text size %g was refused", static_cast<double>(size));
        return;
    }
    textSize_ = size;
    updateFontSize();
}

void UIInputText::updateFontSize() {
    const geometry::Matrix matrix = getFullTransformation();
    const double scale = std::hypot(matrix.m01, matrix.m11);
    if (std::isfinite(scale) && scale > 0) {
        changeStyle([&](NSTextFieldStyle& style) { style.fontSize = double{textSize_} * scale; });
    }
}

void UIInputText::setTextColor(unsigned argb) {
    changeStyle([&](NSTextFieldStyle& style) { style.textColor = colorOf(argb); });
}

void UIInputText::setPlaceholderColor(unsigned argb) {
    changeStyle([&](NSTextFieldStyle& style) { style.placeholderColor = colorOf(argb); });
}

void UIInputText::setBackgroundColor(unsigned argb) {
    changeStyle([&](NSTextFieldStyle& style) { style.backgroundColor = colorOf(argb); });
}

void UIInputText::setSelectionColor(unsigned argb) {
    changeStyle([&](NSTextFieldStyle& style) { style.selectionColor = colorOf(argb); });
}

void UIInputText::setAlignment(TextAlign align) {
    using platform::CTTextAlignment;
    const CTTextAlignment alignment = align == TextAlign::Center ? CTTextAlignment::Center
                                      : align == TextAlign::End  ? CTTextAlignment::Right
                                                                 : CTTextAlignment::Left;
    changeStyle([&](NSTextFieldStyle& style) { style.alignment = alignment; });
}

// ---- input ----

void UIInputText::setEditable(bool editable) {
    withField([&](NSTextField& field) { field.setEditable(editable); });
}

bool UIInputText::isEditable() const {
    bool editable = false;
    withField([&](NSTextField& field) { editable = field.isEditable(); });
    return editable;
}

void UIInputText::setEnabled(bool enabled) {
    withField([&](NSTextField& field) { field.setEnabled(enabled); });
}

bool UIInputText::isEnabled() const {
    bool enabled = false;
    withField([&](NSTextField& field) { enabled = field.isEnabled(); });
    return enabled;
}

bool UIInputText::focus() {
    bool isGiven = false;
    withField([&](NSTextField& field) {
        isGiven = field.window() != nullptr && field.window()->makeFirstResponder(&field);
    });
    return isGiven;
}

void UIInputText::unfocus() {
    withField([](NSTextField& field) {
        if (field.isFocused()) {
            field.window()->makeFirstResponder(nullptr);
        }
    });
}

bool UIInputText::isFocused() const {
    bool focused = false;
    withField([&](NSTextField& field) { focused = field.isFocused(); });
    return focused;
}

void UIInputText::setTabOrder(int order) {
    withField([&](NSTextField& field) { field.setKeyViewOrder(order); });
}

void UIInputText::setSelection(const Selection& selection) {
    withField([&](NSTextField& field) {
        const std::size_t end = field.stringValue().size();
        if (selection.anchor > end || selection.caret > end) {
            platform::NSLog("InputText: the selection %zu to %zu was cut: the text ends at %zu",
                            selection.anchor, selection.caret, end);
        }
        field.setSelection(selection.anchor, selection.caret);
    });
}

InputText::Selection UIInputText::getSelection() const {
    Selection selection;
    withField([&](NSTextField& field) { selection = {field.selectionAnchor(), field.caret()}; });
    return selection;
}

}  // namespace orvane::display::graphics::quartz
