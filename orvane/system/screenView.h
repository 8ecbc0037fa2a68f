#pragma once

namespace orvane::platform {
class NSView;
}

namespace orvane::system {

// The view that the host placed the display's view in, borrowed; null when there is none. Display
// defines this function: it owns the display's view, and its module is of a higher level than this
// one. Makes the display when there is none yet. Main thread only.
const platform::NSView* screenView();

}  // namespace orvane::system
