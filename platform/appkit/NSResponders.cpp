#include "platform/appkit/NSResponders.h"

#include <algorithm>
#include <vector>

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

bool NSResponders::sendKey(NSView* target, const NSEvent& event) {
    return offer(target, [&event](NSView& view) {
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

NSView* NSResponders::nextKeyView(NSView* contentView, bool forward, bool wraps) const {
    // All views that Tab visits, and the first responder, in the order of the tree.
    std::vector<NSView*> views;
    std::vector<NSView*> pending;
    if (contentView != nullptr) {
        pending.push_back(contentView);
    }
    while (!pending.empty()) {
        NSView* const view = pending.back();
        pending.pop_back();
        if (view->isHidden()) {
            continue;
        }
        if (view == first_ || (view->canBecomeKeyView() && view->acceptsFirstResponder())) {
            views.push_back(view);
        }
        const std::vector<NSView*>& subviews = view->subviewsInDrawingOrder();
        pending.insert(pending.end(), subviews.rbegin(), subviews.rend());
    }
    std::ranges::stable_sort(views, {}, &NSView::keyViewOrder);
    if (!forward) {
        std::ranges::reverse(views);
    }
    // Begin after the first responder; with wrapping, the views before it follow.
    const auto first = std::ranges::find(views, first_);
    if (first != views.end()) {
        if (wraps) {
            std::rotate(views.begin(), first + 1, views.end());
            views.pop_back();
        } else {
            views.erase(views.begin(), first + 1);
        }
    }
    return views.empty() ? nullptr : views.front();
}

}  // namespace orvane::platform
