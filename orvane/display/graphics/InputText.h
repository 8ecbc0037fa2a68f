#pragma once

#include <string>

#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display::graphics {

// A text that the user can edit: the desktop's own control, in the bounds that the application
// gives it.
class ORVANE_EXPORT InputText : public virtual SizedObject<DisplayObject> {
public:
    // UTF-8. What the user has typed replaces it.
    virtual void setContent(const std::string& content) = 0;
    virtual std::string getContent() const = 0;

    virtual bool isMultiline() const = 0;
    virtual bool isEditable() const = 0;
    // Whether what is typed is kept from view.
    virtual bool isSecure() const = 0;
    // In characters; 0 for no limit.
    virtual int getMaximumLength() const = 0;
};

}  // namespace orvane::display::graphics
