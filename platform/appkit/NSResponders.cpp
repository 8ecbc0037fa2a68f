#include "platform/appkit/NSResponders.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/appkit/NSView.h"
#include "platform/appkit/offerToViews.h"

namespace orvane::platform {

namespace {

// Notches of a wheel belong together if they are less apart than this, in seconds and points.
constexpr double kWheelPause = 0.3;
constexpr double kWheelReach = 8;
// A touchpad gesture stays on an axis if it goes this many times farther along it than along the
// other one in its first points.
constexpr double kAxisRatio = 2;
constexpr double kAxisDistance = 8;

template <typename Handle>
bool offer(NSView* view, const Handle& handle) {
    return offerToViews(view, handle) != nullptr;
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

bool NSResponders::offerScroll(NSView* view, const NSEvent& event) {
    return offer(view, [&event](NSView& each) { return each.scrollWheel(event); });
}

NSView* NSResponders::scrollTarget(NSView* contentView, const NSEvent& event) const {
    const std::shared_ptr<NSView> scrolled = scrolled_.lock();
    if (scrolled && scrolled->window() != nullptr) {
        const bool continuesGesture = isTouchpadGesture_ && (event.phase == NSEventPhase::Changed ||
                                                             event.phase == NSEventPhase::Ended);
        const bool continuesWheel =
            event.phase == NSEventPhase::None && lastScroll_.phase == NSEventPhase::None &&
            event.timestamp - lastScroll_.timestamp < kWheelPause &&
            std::abs(event.locationInWindow.x - lastScroll_.locationInWindow.x) < kWheelReach &&
            std::abs(event.locationInWindow.y - lastScroll_.locationInWindow.y) < kWheelReach;
        if (continuesGesture || continuesWheel) {
            return scrolled.get();
        }
    }
    return contentView != nullptr ? contentView->hitTest(event.locationInWindow) : nullptr;
}

CGPoint NSResponders::alongOneAxis(CGPoint delta) {
    if (std::hypot(gestureWay_.x, gestureWay_.y) < kAxisDistance) {
        gestureWay_.x += delta.x;
        gestureWay_.y += delta.y;
    }
    const double across = std::abs(gestureWay_.x);
    const double down = std::abs(gestureWay_.y);
    if (across > kAxisRatio * down) {
        delta.y = 0;
    } else if (down > kAxisRatio * across) {
        delta.x = 0;
    }
    return delta;
}

bool NSResponders::sendScroll(NSView* contentView, const NSEvent& event) {
    NSView* const target = scrollTarget(contentView, event);
    if (!isTouchpadGesture_ || event.phase != NSEventPhase::None) {
        scrolled_ = target != nullptr ? target->weak_from_this() : std::weak_ptr<NSView>();
    }
    NSEvent sent = event;
    switch (event.phase) {
        case NSEventPhase::Began:
            isTouchpadGesture_ = true;
            gestureWay_ = {};
            sent.scrollingDelta = alongOneAxis(event.scrollingDelta);
            break;
        case NSEventPhase::Changed:
            sent.scrollingDelta = alongOneAxis(event.scrollingDelta);
            break;
        case NSEventPhase::Ended:
            isTouchpadGesture_ = false;
            break;
        case NSEventPhase::None:
            break;
    }
    lastScroll_ = event;
    return offerScroll(target, sent);
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
