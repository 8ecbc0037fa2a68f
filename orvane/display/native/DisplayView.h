#pragma once

#include "platform/appkit/NSView.h"

namespace orvane::display {

// The display's root view: the origin of the whole world is its top left.
class ORVANE_EXPORT DisplayView final : public platform::NSView {
public:
    bool isFlipped() const override { return true; }
};

}  // namespace orvane::display
