#pragma once

#include <cstddef>
#include <string>

#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/graphics/TextStyleable.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/notification/Listener.h"

namespace orvane::display::graphics {

// A text that the user can edit: in a window a control of the desktop, with its input methods,
// clipboard and history, elsewhere a plain likeness that does the same. It occupies the bounds that
// the application sets. The text begins at their edges: what surrounds it is for the application to
// paint. A single line is centered vertically.
//
// The font's size follows the scale of the object's transformation; the control does not turn.
//
// Texts are UTF-8. Bytes that are not valid, and zero bytes, become replacement characters, with
// one line in the log. Positions in the text are bytes. Functions may be called from any thread,
// and wait for the main thread. Listeners are called on the main thread, and only for what the user
// does.
class ORVANE_EXPORT InputText : public virtual SizedObject<DisplayObject> {
public:
    // The user has changed the text.
    struct ChangeEvent {
        using listener_type = notification::Listener<DisplayObject, ChangeEvent, void>;
    };
    // The user has pressed Enter; in a text of several lines, Control and Enter.
    struct CommitEvent {
        using listener_type = notification::Listener<DisplayObject, CommitEvent, void>;
    };
    // The text got the keyboard or lost it.
    struct FocusEvent {
        using listener_type = notification::Listener<DisplayObject, FocusEvent, void>;

        bool isFocused = false;
    };
    // What the text is for. On-screen keyboards and input methods adapt to it; it restricts
    // nothing.
    enum class Purpose { FreeForm, Digits, Number, Phone, URL, Email, Name, Pin };
    // A part of the text. The caret is the end that moves.
    struct Selection {
        std::size_t anchor = 0;
        std::size_t caret = 0;
    };

    // ---- what it is, fixed when it is created ----
    // Whether the text may have more than one line. Otherwise line breaks become spaces.
    virtual bool isMultiline() const = 0;
    // Whether the typed text is hidden, as for a password. Such a text has one line, is not copied,
    // and is not readable by assistive technology.
    virtual bool isSecure() const = 0;

    // ---- the text ----
    // Replaces the text and puts the caret at its end. A text longer than the maximum length, than
    // 65535 bytes of one line, or than 1 MiB, is cut; the log says so for the latter two.
    virtual void setContent(const std::string& content) = 0;
    // Returns the current text, with what the user has typed.
    virtual std::string getContent() const = 0;
    // Sets what is shown while the text is empty.
    virtual void setPlaceholder(const std::string& placeholder) = 0;
    // Sets the largest number of characters, as readers count them: a letter with its accents is
    // one. 0 means no limit; a negative number is refused. A longer text is cut.
    virtual void setMaximumLength(int characters) = 0;
    virtual int getMaximumLength() const = 0;
    // Sets what the text is for.
    virtual void setPurpose(Purpose purpose) = 0;

    // ---- the look ----
    // Sets the font by its PostScript name, its full name or its family. A name that is not found
    // gives a default font.
    virtual void setFont(const std::string& name) = 0;
    // Sets the size of the font, in object coordinates; 12 at first. A size that is not positive
    // and finite is refused.
    virtual void setTextSize(float size) = 0;
    // Set colors: alpha in bits 24 to 31, then red, green and blue. At first the text and the caret
    // are black, the placeholder gray, and the ground is transparent:
    virtual void setTextColor(unsigned argb) = 0;
    virtual void setPlaceholderColor(unsigned argb) = 0;
    virtual void setBackgroundColor(unsigned argb) = 0;
    virtual void setSelectionColor(unsigned argb) = 0;
    // Aligns the lines within the bounds; Start at first.
    virtual void setAlignment(TextAlign align) = 0;

    // ---- input ----
    // Sets whether the user may change the text, in addition to selecting it.
    virtual void setEditable(bool editable) = 0;
    virtual bool isEditable() const = 0;
    // Sets whether the text takes input at all. True at first. A disabled text is paler.
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;
    // Gives the keyboard to the text. Returns false if it is disabled or not on the display.
    virtual bool focus() = 0;
    // Takes the keyboard from the text, if it has it.
    virtual void unfocus() = 0;
    // Whether the text has the keyboard.
    virtual bool isFocused() const = 0;
    // Tab visits texts with a lower order first, and those of equal order as they are in the object
    // tree. 0 at first.
    virtual void setTabOrder(int order) = 0;
    // Selects a part of the text. A position inside a character becomes its beginning; positions
    // beyond the text become its end, with one line in the log.
    virtual void setSelection(const Selection& selection) = 0;
    virtual Selection getSelection() const = 0;
};

}  // namespace orvane::display::graphics
