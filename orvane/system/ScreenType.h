#pragma once

#include "orvane/commons/Export.h"

namespace orvane::system {

// What the superview of the display's view must be able to say about the screen. The host's view
// derives from it beside NSView; the runtime asks by dynamic_cast and takes a superview that is no
// ScreenTypeView for landscape. Main thread only.
class ORVANE_EXPORT ScreenTypeView {
public:
    static constexpr int portrait = 0;
    static constexpr int landscape = 1;

    virtual int screenType() const = 0;

protected:
    virtual ~ScreenTypeView();
};

}  // namespace orvane::system
