#include "platform/appkit/NSWindow.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "orvane/commons/ScopedFlag.h"
#include "orvane/commons/Trace.h"
#include "platform/appkit/NSBackingPolicy.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureArena.h"
#include "platform/appkit/NSPointer.h"
#include "platform/appkit/NSResponders.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSViewList.h"
#include "platform/appkit/NSWindowHost.h"
#include "platform/appkit/NSWindowObserver.h"
#include "platform/appkit/offerToViews.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimeline.h"

namespace orvane::platform {

namespace {

// An internal bit next to the NSViewChange bits: which part of the view and its subtree is visible
// must be computed again.
constexpr unsigned kVisibilityStale = 1U << 30;
constexpr unsigned kAffectsVisibility =
    kVisibilityStale | kNSViewGeometryChanged | kNSViewHiddenChanged;

// Cuts off what is outside a clip: precise for one that is parallel to the window's edges,
// otherwise its bounding box.
CGRect cut(const CGRect& visible, const CGRect& clip, const CGAffineTransform& toWindow) {
    return isFinite(clip) && toWindow.isDrawable()
               ? intersection(visible, toWindow.apply(standardized(clip)))
               : CGRect{};
}

}  // namespace

// Where a view is, and what can be seen of it.
struct NSWindow::Exposure {
    CGAffineTransform toWindow;
    CGRect visible;  // in the window's coordinates

    void cutToBounds(const NSView& view) {
        if (view.clipsToBounds()) {
            visible = cut(visible, view.bounds(), toWindow);
        }
    }
    // How far the view is from what is visible, along the farther axis.
    double distanceOf(const NSView& view) const {
        if (isEmpty(visible) || !toWindow.isDrawable()) {
            return INFINITY;
        }
        const CGRect box = toWindow.apply(standardized(view.bounds()));
        const auto gap = [](double from, double length, double otherFrom, double otherLength) {
            return std::max({from - otherFrom - otherLength, otherFrom - from - length, 0.0});
        };
        return std::max(gap(box.origin.x, box.size.width, visible.origin.x, visible.size.width),
                        gap(box.origin.y, box.size.height, visible.origin.y, visible.size.height));
    }
};

struct NSWindow::State {
    std::shared_ptr<NSView> contentView;
    NSViewList changed{NSViewListKind::Changed};
    NSViewList reordered{NSViewListKind::Reordered};
    NSViewList damaged{NSViewListKind::Damaged};
    NSViewList animated{NSViewListKind::Animated};
    NSViewList stepped{NSViewListKind::Stepped};
    // Views with animations that left the window since the last pass. The animations end in the
    // next pass, unless the view is back by then.
    std::vector<std::weak_ptr<NSView>> departed;
    // Set when views were removed or the window's size or scale changed; the lists above do not
    // record that.
    bool mustPresent = false;
    bool scheduled = false;
    bool displaying = false;
    double displayTime = 0;
    // Used during a pass only; members to reuse their memory.
    std::vector<std::shared_ptr<NSView>> working;
    std::vector<std::shared_ptr<NSView>> visibilityRoots;
    NSGestureArena gestures;
    NSResponders responders;
    NSPointer pointer;
    NSCursor cursor = NSCursor::Default;
    std::weak_ptr<NSView> dropTarget;  // would take the drag that is over it
    NSWindowHost refusingHost;
    NSWindowHost* host = &refusingHost;
    NSWindowDelegate* delegate = nullptr;
    bool isFullScreen = false;
    NSWindowObserver* observer = nullptr;
};

NSWindow::NSWindow() : state_(std::make_unique<State>()) {}

NSWindow::~NSWindow() {
    state_->scheduled = true;  // scheduleDisplay is pure virtual from here on
    setContentView(nullptr);
    endDepartedAnimations();
    // No later event will end the gesture.
    sendEvent({NSEventType::MouseCancelled, {}, 0});
}

NSView* NSWindow::contentView() const {
    return state_->contentView.get();
}

void NSWindow::setContentView(const std::shared_ptr<NSView>& view) {
    if (view == state_->contentView) {
        return;
    }
    if (const std::shared_ptr<NSView> old = std::move(state_->contentView)) {
        viewsWillLeave(*old, false);
        old->notifyMovedToWindow();
    }
    state_->contentView = view;
    if (view) {
        view->removeFromSuperviewWithoutNeedingDisplay();
        viewsDidEnter(*view);
        view->notifyMovedToWindow();
    }
}

double NSWindow::displayTime() const {
    return state_->displayTime;
}

// ---- changes of views ----

void NSWindow::setNeedsPass() {
    if (!state_->scheduled) {
        state_->scheduled = true;
        scheduleDisplay();
    }
}

void NSWindow::viewsDidEnter(NSView& root) {
    std::vector<NSView*> subtree{&root};
    while (!subtree.empty()) {
        NSView& view = *subtree.back();
        subtree.pop_back();
        view.window_ = this;
        view.changes_ = 0;
        viewDidChange(view, kVisibilityStale);
        if (!view.subviews_.empty()) {
            state_->reordered.add(view);
        }
        if (view.layer_->hasAnimations()) {
            state_->animated.add(view);
        }
        if (view.needsFrames_) {
            state_->stepped.add(view);
        }
        didAddView(view);
        for (std::size_t i = view.subviews_.size(); i-- > 0;) {
            subtree.push_back(view.subviews_[i].get());
        }
    }
}

void NSWindow::viewsWillLeave(NSView& root, bool stayInWindow) {
    state_->mustPresent = true;
    setNeedsPass();
    std::vector<std::shared_ptr<NSView>> subtree{root.shared_from_this()};
    for (std::size_t i = 0; i < subtree.size(); ++i) {
        const auto& children = subtree[i]->subviews_;
        subtree.insert(subtree.end(), children.begin(), children.end());
    }
    for (std::size_t i = subtree.size(); i-- > 0;) {
        NSView& view = *subtree[i];
        willRemoveView(view);
        view.realization_.reset();
        state_->changed.remove(view);
        state_->reordered.remove(view);
        state_->damaged.remove(view);
        state_->animated.remove(view);
        state_->stepped.remove(view);
        view.window_ = nullptr;
        if (!stayInWindow) {
            view.store_.reset();
            if (view.layer_->hasAnimations()) {
                state_->departed.push_back(subtree[i]);
            }
            state_->gestures.viewWillLeave(view);
            state_->responders.viewWillLeave(view);
        }
    }
}

void NSWindow::viewDidChange(NSView& view, unsigned changes) {
    view.changes_ |= changes;
    state_->changed.add(view);
    setNeedsPass();
}

void NSWindow::viewAnimationsDidChange(NSView& view) {
    if (view.layer_->hasAnimations()) {
        state_->animated.add(view);
    } else {
        state_->animated.remove(view);
    }
}

void NSWindow::viewNeedsFramesDidChange(NSView& view) {
    if (view.needsFrames_) {
        state_->stepped.add(view);
        setNeedsPass();
    } else {
        state_->stepped.remove(view);
    }
}

void NSWindow::viewNeedsDisplay(NSView& view) {
    state_->damaged.add(view);
    setNeedsPass();
}

void NSWindow::subviewOrderDidChange(NSView& superview) {
    state_->reordered.add(superview);
    setNeedsPass();
}

void NSWindow::backingPropertiesDidChange() {
    state_->mustPresent = true;
    setNeedsPass();
    if (state_->contentView) {
        viewDidChange(*state_->contentView, kVisibilityStale);
    }
}

// ---- the display pass ----

bool NSWindow::isAnimating() const {
    if (!state_->stepped.isEmpty()) {
        return true;
    }
    const double now = CACurrentMediaTime();
    const auto& views = state_->animated.views();
    return std::any_of(views.begin(), views.end(),
                       [now](const NSView* view) { return view->layer()->isAnimating(now); });
}

bool NSWindow::needsDisplay() const {
    return state_->mustPresent || !state_->changed.isEmpty() || !state_->reordered.isEmpty() ||
           !state_->damaged.isEmpty() || isAnimating();
}

void NSWindow::setObserver(NSWindowObserver* observer) {
    state_->observer = observer;
}

void NSWindow::displayIfNeeded() {
    displayIfNeeded(CACurrentMediaTime());
}

void NSWindow::displayIfNeeded(double time) {
    if (state_->displaying) {
        return;
    }
    const commons::ScopedFlag displaying(state_->displaying);
    const commons::TraceScope frameTrace("frame");
    state_->displayTime = time;
    if (state_->observer != nullptr) {
        state_->observer->willDisplay();
    }
    // Changes that the completions make belong to this pass and must not schedule another one.
    state_->scheduled = true;
    {
        const commons::TraceScope updateTrace("update");
        CATimeline::instance().tick(state_->displayTime);
        stepViews();
        endDepartedAnimations();
    }
    state_->scheduled = false;
    if (needsDisplay()) {
        reportChanges();
        paintDamage();
        state_->mustPresent = false;
        {
            const commons::TraceScope presentTrace("present");
            present();
        }
        if (isAnimating()) {
            setNeedsPass();
        }
    }
    if (state_->observer != nullptr) {
        state_->observer->didDisplay();
    }
}

void NSWindow::endDepartedAnimations() {
    // Completions may remove further views.
    while (!state_->departed.empty()) {
        const std::shared_ptr<NSView> view = state_->departed.back().lock();
        state_->departed.pop_back();
        if (view && view->window_ != this) {
            view->layer_->removeAllAnimations();
        }
    }
}

void NSWindow::stepViews() {
    std::vector<std::shared_ptr<NSView>>& views = state_->working;
    views.clear();
    for (NSView* const view : state_->stepped.views()) {
        views.push_back(view->shared_from_this());
    }
    for (const std::shared_ptr<NSView>& view : views) {
        if (view->window_ == this && view->needsFrames_) {
            view->step(state_->displayTime);
        }
    }
    views.clear();
}

void NSWindow::reportChanges() {
    std::vector<std::shared_ptr<NSView>>& views = state_->working;
    state_->reordered.take(views);
    for (const std::shared_ptr<NSView>& view : views) {
        if (view->window_ == this) {
            didReorderSubviews(*view);
        }
    }
    for (NSView* view : state_->animated.views()) {
        if (view->layer_->isAnimating(state_->displayTime)) {
            view->changes_ |= kNSViewGeometryChanged | kNSViewOpacityChanged;
            state_->changed.add(*view);
        }
    }
    state_->changed.take(views);
    std::vector<std::shared_ptr<NSView>>& roots = state_->visibilityRoots;
    roots.clear();
    for (const std::shared_ptr<NSView>& view : views) {
        // The walk from a changed ancestor reaches this view, too.
        bool reached = false;
        for (const NSView* above = view->superview_; above != nullptr && !reached;
             above = above->superview_) {
            reached = (above->changes_ & kAffectsVisibility) != 0;
        }
        if ((view->changes_ & kAffectsVisibility) && !reached) {
            roots.push_back(view);
        }
    }
    for (const std::shared_ptr<NSView>& view : views) {
        const unsigned changes = std::exchange(view->changes_, 0) & ~kVisibilityStale;
        if (changes && view->window_ == this) {
            didChangeView(*view, changes);
            if (state_->observer != nullptr) {
                state_->observer->didChangeView(*view);
            }
        }
    }
    const NSBackingPolicy policy(contentSize(), backingScaleFactor());
    for (const std::shared_ptr<NSView>& root : roots) {
        if (root->window_ != this || root->isHiddenOrHasHiddenAncestor()) {
            continue;
        }
        updateStoredAreas(*root, exposureOf(root->superview_), policy);
    }
    roots.clear();
    views.clear();
}

auto NSWindow::exposureOf(const NSView* view) const -> Exposure {
    if (view == nullptr) {
        return {{}, {{0, 0}, contentSize()}};
    }
    Exposure exposure = exposureOf(*view, exposureOf(view->superview_));
    exposure.cutToBounds(*view);
    return exposure;
}

auto NSWindow::exposureOf(const NSView& view, const Exposure& superview) const -> Exposure {
    CGRect visible = superview.visible;
    for (const NSViewClip& clip : view.clips_) {
        visible = cut(visible, clip.rect, clip.transform.concat(superview.toWindow));
    }
    return {view.layer_->affineTransform(view.layer_->presentation(state_->displayTime))
                .concat(superview.toWindow),
            visible};
}

void NSWindow::updateStoredAreas(NSView& view, const Exposure& superview,
                                 const NSBackingPolicy& policy) {
    // A hidden view keeps what it has until it is shown again.
    if (view.hidden_) {
        return;
    }
    Exposure exposure = exposureOf(view, superview);
    if (showsNatively(view)) {
        didExposeNativeView(view, exposure.distanceOf(view));
    } else if (view.paints()) {
        updateStoredArea(view, exposure, policy);
    }
    exposure.cutToBounds(view);
    for (const std::shared_ptr<NSView>& subview : view.subviews_) {
        updateStoredAreas(*subview, exposure, policy);
    }
}

void NSWindow::updateStoredArea(NSView& view, const Exposure& exposure,
                                const NSBackingPolicy& policy) {
    if (view.store_ && view.store_->scale() != backingScaleFactor()) {
        view.store_.reset();
    }
    // A view that cannot be drawn keeps what it has.
    if (const std::optional<CGAffineTransform> fromWindow = exposure.toWindow.invert()) {
        const NSBackingRect stored = view.store_ ? view.store_->area() : NSBackingRect{};
        const CGRect visible =
            isEmpty(exposure.visible) ? CGRect{} : fromWindow->apply(exposure.visible);
        storeArea(view, policy.areaToStore(view.frame_.size, visible, stored));
    }
}

void NSWindow::storeArea(NSView& view, const NSBackingRect& area) {
    if (area.isEmpty()) {
        if (view.store_) {
            view.store_.reset();
            state_->damaged.remove(view);
            didPaintView(view, {});
        }
        return;
    }
    if (!view.store_) {
        view.store_ = std::make_shared<NSBackingStore>(backingScaleFactor());
    }
    if (view.store_->area() != area) {
        view.store_->setArea(area);
        if (!view.store_->needsPainting()) {
            didPaintView(view, {});
        }
    }
    if (view.store_->needsPainting()) {
        state_->damaged.add(view);
    }
}

void NSWindow::paintDamage() {
    std::vector<std::shared_ptr<NSView>>& views = state_->working;
    state_->damaged.take(views);
    for (const std::shared_ptr<NSView>& view : views) {
        // Painting may remove any of the views from the window. The damage of a hidden view waits
        // until the view is shown.
        const std::shared_ptr<NSBackingStore> store = view->store_;
        if (view->window_ == this && store && !view->isHiddenOrHasHiddenAncestor()) {
            const commons::TraceScope trace("paint");
            const std::span<const NSBackingRect> painted = store->paint(*view);
            if (view->window_ == this) {
                didPaintView(*view, painted);
                if (state_->observer != nullptr) {
                    state_->observer->didPaintView(*view, painted);
                }
            }
        }
    }
    views.clear();
}

// ---- input ----

bool NSWindow::sendEvent(const NSEvent& event) {
    switch (event.type) {
        case NSEventType::KeyDown:
        case NSEventType::KeyUp: {
            NSView* const first = firstResponder();
            if (NSResponders::sendKey(first != nullptr ? first : contentView(), event)) {
                return true;
            }
            constexpr unsigned commands =
                kNSEventModifierControl | kNSEventModifierAlt | kNSEventModifierSuper;
            return event.type == NSEventType::KeyDown && event.key == "Tab" &&
                   (event.modifierFlags & commands) == 0 &&
                   selectKeyView((event.modifierFlags & kNSEventModifierShift) == 0, true);
        }
        case NSEventType::ScrollWheel:
            return state_->responders.sendScroll(state_->contentView.get(), event);
        default:
            return sendPointer(event);
    }
}

bool NSWindow::sendPointer(const NSEvent& event) {
    if (event.type == NSEventType::LeftMouseDown) {
        giveKeyboardToViewAt(event.locationInWindow);
    }
    const bool handled = state_->pointer.send(state_->contentView.get(), event);
    switch (event.type) {
        case NSEventType::LeftMouseDown:
        case NSEventType::LeftMouseDragged:
        case NSEventType::LeftMouseUp:
        case NSEventType::MouseCancelled:
            if (!handled) {
                state_->gestures.sendEvent(state_->contentView, event);
            }
            return true;
        default:
            return handled;
    }
}

NSCursor NSWindow::cursor() const {
    return state_->cursor;
}

void NSWindow::setCursor(NSCursor cursor) {
    if (state_->cursor != cursor) {
        state_->cursor = cursor;
        didChangeCursor();
    }
}

NSView* NSWindow::firstResponder() const {
    return state_->responders.first();
}

bool NSWindow::makeFirstResponder(NSView* view) {
    NSView* const old = firstResponder();
    if (view == old) {
        return true;
    }
    if (view != nullptr && (view->window_ != this || !view->acceptsFirstResponder())) {
        return false;
    }
    const std::shared_ptr<NSView> next = view != nullptr ? view->shared_from_this() : nullptr;
    const std::shared_ptr<NSView> last = old != nullptr ? old->shared_from_this() : nullptr;
    state_->responders.setFirst(view);
    didChangeFirstResponder();
    if (last) {
        last->didResignFirstResponder();
    }
    // The view that lost the keyboard may have given it to a third one.
    if (next && firstResponder() == next.get()) {
        next->didBecomeFirstResponder();
    }
    for (const std::shared_ptr<NSView>& changed : {last, next}) {
        std::shared_ptr<NSView> above = changed;
        while (above && above->superview() != nullptr) {
            above = above->superview()->shared_from_this();
            above->firstResponderBelowDidChange();
        }
    }
    return true;
}

bool NSWindow::selectKeyView(bool forward, bool wraps) {
    NSView* const next = state_->responders.nextKeyView(contentView(), forward, wraps);
    if (next == nullptr) {
        return false;
    }
    const std::shared_ptr<NSView> view = next->shared_from_this();
    if (!makeFirstResponder(next)) {
        return false;
    }
    if (firstResponder() == next) {
        next->didBecomeKeyView();
    }
    return true;
}

void NSWindow::giveKeyboardToViewAt(CGPoint location) {
    NSView* const content = contentView();
    for (NSView* view = content != nullptr ? content->hitTest(location) : nullptr; view != nullptr;
         view = view->superview()) {
        if (view->acceptsFirstResponder()) {
            makeFirstResponder(view);
            return;
        }
    }
}

bool NSWindow::sendDrop(const NSDrop& drop) {
    std::shared_ptr<NSView> target;
    if (drop.phase != NSDropPhase::Left && contentView() != nullptr) {
        target = offerToViews(contentView()->hitTest(drop.locationInWindow),
                              [&drop](NSView& view) { return view.performDrop(drop); });
    }
    const std::shared_ptr<NSView> before = state_->dropTarget.lock();
    if (before && before != target && before->window() == this) {
        before->performDrop({NSDropPhase::Left, {}});
    }
    state_->dropTarget.reset();
    if (drop.phase == NSDropPhase::Over) {
        state_->dropTarget = target;
    }
    return target != nullptr;
}

bool NSWindow::sendUnhandledKey(const NSEvent& event) {
    NSView* const first = firstResponder();
    if (first == nullptr) {
        return NSResponders::sendKey(contentView(), event);
    }
    return NSResponders::sendKey(showsNatively(*first) ? first->superview() : first, event);
}

// ---- the window around the content ----

NSWindowHost& NSWindow::host() const {
    return *state_->host;
}

void NSWindow::setHost(NSWindowHost* host) {
    state_->host = host != nullptr ? host : &state_->refusingHost;
}

void NSWindow::setDelegate(NSWindowDelegate* delegate) {
    state_->delegate = delegate;
}

bool NSWindow::performClose() {
    if (state_->delegate != nullptr && !state_->delegate->windowShouldClose()) {
        return false;
    }
    return state_->host->close();
}

bool NSWindow::isFullScreen() const {
    return state_->isFullScreen;
}

void NSWindow::fullScreenDidChange(bool isFullScreen) {
    if (std::exchange(state_->isFullScreen, isFullScreen) != isFullScreen &&
        state_->delegate != nullptr) {
        state_->delegate->windowDidChangeFullScreen();
    }
}

void NSWindow::setAccessibility(NSAccessibility*) {}
void NSWindow::accessibilityDidChange() {}

// ---- for subclasses ----

void NSWindow::didAddView(NSView&) {}
void NSWindow::willRemoveView(NSView&) {}
void NSWindow::didReorderSubviews(NSView&) {}
void NSWindow::didChangeView(NSView&, unsigned) {}
void NSWindow::didPaintView(NSView&, std::span<const NSBackingRect>) {}
void NSWindow::present() {}
void NSWindow::didChangeFirstResponder() {}
void NSWindow::didChangeCursor() {}
void NSWindow::didExposeNativeView(NSView&, double) {}
bool NSWindow::showsNatively(const NSView&) const {
    return false;
}

}  // namespace orvane::platform
