#pragma once

#include "orvane/commons/Export.h"

namespace orvane::system {

// Implemented by the host's view around the display's view, in addition to NSView: says which way
// the screen is turned. isPortraitScreenOrientation() finds it with dynamic_cast; without one the
// screen counts as landscape. embedding::Session provides such a view. Main thread only.
class ORVANE_EXPORT ScreenTypeView {
public:
    static constexpr int portrait = 0;
    static constexpr int landscape = 1;

    // Returns `portrait` or `landscape`.
    virtual int screenType() const = 0;

protected:
    virtual ~ScreenTypeView();
};

}  // namespace orvane::system
