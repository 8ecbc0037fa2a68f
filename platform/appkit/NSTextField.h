#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/appkit/NSControl.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coretext/CTParagraphStyle.h"

namespace orvane::platform {

class NSTextCommands;
class NSTextEditor;
class NSTextFieldPicture;

// How a text field looks.
struct NSTextFieldStyle {
    // A PostScript name, a full name or a family; see CTFont. Empty for a default font.
    std::string fontName;
    // In points. Sizes that are not positive and finite become CTFont::kDefaultSize.
    double fontSize = 12;
    CGColor textColor{0, 0, 0, 1};  // also of the caret
    CGColor placeholderColor{0.55, 0.57, 0.6, 1};
    // The ground, which fills the bounds.
    CGColor backgroundColor{0, 0, 0, 0};
    CGColor selectionColor{0.21, 0.52, 0.89, 0.35};
    CTTextAlignment alignment = CTTextAlignment::Natural;

    friend bool operator==(const NSTextFieldStyle&, const NSTextFieldStyle&) = default;
};

// What a text is for. On-screen keyboards and input methods adapt to it; it restricts nothing.
enum class NSTextPurpose { FreeForm, Digits, Number, Phone, URL, Email, Name, Pin };

// A control with a text that the user can edit: one line, several lines, or a secret. It has no
// frame: the text begins at the edges of the bounds. Lines are centered vertically.
//
// Where the desktop has no widget for it, the field edits its text itself and paints it: it takes
// keys and presses, and does what the widget would do. The clipboard is that of NSDesktop.
//
// Texts are UTF-8 and always valid: bytes that are not, and zero bytes, become replacement
// characters. Positions are bytes of the text. A setter that is given an equal value does nothing;
// otherwise the window is notified once. What the application sets calls no handler.
class ORVANE_EXPORT NSTextField : public NSControl {
public:
    static constexpr std::string_view kKind = "TextField";

    // A secret is one line, shows a dot for each character, and is not copied.
    enum class Kind { Line, Multiline, Secret };

    // What the owner does about the user's input. Each may be empty, and may destroy the field.
    struct Handlers {
        std::function<void()> textChanged;
        // Enter, or Control and Enter in a field of several lines.
        std::function<void()> committed;
        // The field got the keyboard or lost it: see isFocused.
        std::function<void()> focusChanged;
    };

    // Creates an empty field. Its kind cannot be changed.
    explicit NSTextField(Kind kind = Kind::Line);
    ~NSTextField() override;

    std::string_view controlKind() const override { return kKind; }
    // The kind that it was created with.
    Kind kind() const;
    // Replaces all handlers.
    void setHandlers(Handlers handlers);

    // ---- state ----
    // The text, with what the user has entered.
    const std::string& stringValue() const;
    // Puts the caret at the end. The text is cut to what the field can hold: 65535 bytes of a line,
    // 1 MiB of several lines, and the maximum length; one line in the log says so, except for the
    // latter. Line breaks in a single line become spaces.
    void setStringValue(const std::string& value);
    // What is shown while the text is empty.
    const std::string& placeholder() const { return placeholder_; }
    void setPlaceholder(const std::string& placeholder);
    // How the field looks.
    const NSTextFieldStyle& style() const { return style_; }
    // Sets how the field looks.
    void setStyle(const NSTextFieldStyle& style);
    // In characters as readers count them; 0 means no limit. Cuts a longer text.
    std::size_t maximumLength() const;
    void setMaximumLength(std::size_t characters);
    // What the text is for; FreeForm at first.
    NSTextPurpose purpose() const { return purpose_; }
    // Sets what the text is for.
    void setPurpose(NSTextPurpose purpose);
    // Whether the field takes input at all. True at first.
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);
    // Whether the user can change the text, in addition to selecting it. True at first.
    bool isEditable() const { return editable_; }
    void setEditable(bool editable);
    // The selection is between the anchor and the caret, which is the end that moves. Positions
    // beyond the text become its end, and those inside a character its beginning.
    std::size_t selectionAnchor() const;
    // The other end of the selection.
    std::size_t caret() const;
    // Selects a part of the text.
    void setSelection(std::size_t anchor, std::size_t caret);
    // Whether the field has the keyboard.
    bool isFocused() const;

    // ---- for the desktop's widget ----
    // Takes over what the user has entered, and calls the handler if the text has changed.
    void takeInput(const std::string& text, std::size_t anchor, std::size_t caret);
    // The user has pressed Enter.
    void commit();
    // Incremented by each change of what the widget shows.
    unsigned revision() const { return revision_; }

    bool acceptsFirstResponder() const override { return enabled_; }
    bool canBecomeKeyView() const override { return true; }
    void didBecomeKeyView() override;
    void didBecomeFirstResponder() override;
    void didResignFirstResponder() override;
    bool keyDown(const NSEvent& event) override;
    void drawRect(const CGRect& dirty) override;

private:
    class Pointer;

    void paste();
    void press(CGPoint point, int clicks, bool extends);
    void drag(CGPoint point);
    // To be called after every change of what the field shows, and after a key only show().
    void changed();
    void show();
    void callTextChanged();

    std::unique_ptr<NSTextEditor> editor_;
    std::unique_ptr<NSTextFieldPicture> picture_;
    std::unique_ptr<NSTextCommands> commands_;
    Handlers handlers_;
    std::string placeholder_;
    NSTextFieldStyle style_;
    NSTextPurpose purpose_ = NSTextPurpose::FreeForm;
    bool enabled_ = true;
    bool editable_ = true;
    unsigned revision_ = 0;
    // What the press that began a drag has selected:
    std::size_t pressedBegin_ = 0;
    std::size_t pressedEnd_ = 0;
};

}  // namespace orvane::platform
