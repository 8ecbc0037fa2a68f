#pragma once

#include <memory>
#include <vector>

#include "platform/appkit/NSViewList.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::platform {

// What changed about the views of a window since its last display pass. NSWindow records it as
// views report it, and NSDisplayPass takes it.
struct NSWindowChanges {
    // A bit of NSView's changes in addition to those of NSViewChange: which part of the view and
    // of its subviews is visible must be computed again.
    static constexpr unsigned kVisibilityStale = 1U << 30;
    static constexpr unsigned kAffectsVisibility =
        kVisibilityStale | kNSViewGeometryChanged | kNSViewHiddenChanged;

    NSViewList changed{NSViewListKind::Changed};
    NSViewList reordered{NSViewListKind::Reordered};
    NSViewList damaged{NSViewListKind::Damaged};
    // Views stay in these two for as long as they have animations or ask for frames.
    NSViewList animated{NSViewListKind::Animated};
    NSViewList stepped{NSViewListKind::Stepped};
    // Views with animations that left the window since the last pass. The animations end in the
    // next pass, unless the view is back by then.
    std::vector<std::weak_ptr<NSView>> departed;
    // Set when views were removed or the window's size or scale changed; the lists above do not
    // record that.
    bool mustPresent = false;
    // Used during a pass only; members to reuse their memory.
    std::vector<std::shared_ptr<NSView>> working;
    std::vector<std::shared_ptr<NSView>> visibilityRoots;
};

}  // namespace orvane::platform
