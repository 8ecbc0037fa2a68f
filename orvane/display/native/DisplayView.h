#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::display {

// The root view of a display. Its top left corner is the origin of screen coordinates.
class ORVANE_EXPORT DisplayView final : public platform::NSView {
public:
    bool isFlipped() const override { return true; }
};

}  // namespace orvane::display
