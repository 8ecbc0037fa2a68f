#pragma once

namespace orvane::platform {
class NSView;
}

namespace orvane::system {

// Returns the superview of the display's view, borrowed, or null. Creates the display if necessary.
// Display.cpp defines this function, because the display belongs to a higher level than this
// module. Main thread only.
const platform::NSView* screenView();

}  // namespace orvane::system
