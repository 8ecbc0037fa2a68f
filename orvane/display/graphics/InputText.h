#pragma once

#include <string>

#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display::graphics {

// A text that the user can edit: a control of the desktop, which occupies the bounds that the
// application sets.
class ORVANE_EXPORT InputText : public virtual SizedObject<DisplayObject> {
public:
    // Replaces the text, which is UTF-8. From any thread; waits for the main thread.
    virtual void setContent(const std::string& content) = 0;
    // Returns the current text, with what the user has typed. From any thread; waits for the main
    // thread.
    virtual std::string getContent() const = 0;

    // Whether the text may have more than one line.
    virtual bool isMultiline() const = 0;
    // Whether the user may change the text.
    virtual bool isEditable() const = 0;
    // Whether the typed text is hidden, as for a password.
    virtual bool isSecure() const = 0;
    // The largest number of characters; 0 means no limit.
    virtual int getMaximumLength() const = 0;
};

}  // namespace orvane::display::graphics
