#include "platform/appkit/NSResponders.h"

#include "platform/appkit/NSView.h"

namespace orvane::platform {

namespace {

// Offers the event to the view and then to its superviews, until one of them returns true.
template <typename Handle>
bool offer(NSView* view, const Handle& handle) {
    // A handler may remove any of these views.
    std::shared_ptr<NSView> current = view != nullptr ? view->shared_from_this() : nullptr;
    while (current) {
        NSView* const above = current->superview();
        const std::shared_ptr<NSView> next = above != nullptr ? above->shared_from_this() : nullptr;
        if (handle(*current)) {
            return true;
        }
        current = next;
    }
    return false;
}

}  // namespace

void NSResponders::viewWillLeave(const NSView& view) {
    if (first_ == &view) {
        first_ = nullptr;
    }
}

bool NSResponders::sendKey(NSView* contentView, const NSEvent& event) {
    return offer(first_ != nullptr ? first_ : contentView, [&event](NSView& view) {
        return event.type == NSEventType::KeyDown ? view.keyDown(event) : view.keyUp(event);
    });
}

bool NSResponders::sendScroll(NSView* contentView, const NSEvent& event) {
    NSView* target = nullptr;
    const std::shared_ptr<NSView> scrolled = scrolled_.lock();
    if (scrolled && scrolled->window() != nullptr && event.phase != NSEventPhase::None &&
        event.phase != NSEventPhase::Began) {
        target = scrolled.get();
    } else if (contentView != nullptr) {
        target = contentView->hitTest(event.locationInWindow);
    }
    if (event.phase == NSEventPhase::Began) {
        scrolled_ = target != nullptr ? target->weak_from_this() : std::weak_ptr<NSView>();
    } else if (event.phase == NSEventPhase::Ended) {
        scrolled_.reset();
    }
    return offer(target, [&event](NSView& view) { return view.scrollWheel(event); });
}

}  // namespace orvane::platform
