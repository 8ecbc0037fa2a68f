#pragma once

#include <memory>
#include <utility>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// Offers an event to the view, which may be null, and then to its superviews, until `handle`
// returns true. Returns the view for which it did, or null. A handler may remove any of the views.
template <typename Handle>
std::shared_ptr<NSView> offerToViews(NSView* view, const Handle& handle) {
    std::shared_ptr<NSView> current = view != nullptr ? view->shared_from_this() : nullptr;
    while (current) {
        NSView* const above = current->superview();
        std::shared_ptr<NSView> next = above != nullptr ? above->shared_from_this() : nullptr;
        if (handle(*current)) {
            break;
        }
        current = std::move(next);
    }
    return current;
}

}  // namespace orvane::platform
