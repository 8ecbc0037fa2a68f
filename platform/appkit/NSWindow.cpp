#include "platform/appkit/NSWindow.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "orvane/commons/ScopedFlag.h"
#include "orvane/commons/Trace.h"
#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSDisplayPass.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindowChanges.h"
#include "platform/appkit/NSWindowHost.h"
#include "platform/appkit/NSWindowInput.h"
#include "platform/appkit/NSWindowObserver.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimeline.h"

namespace orvane::platform {

struct NSWindow::State {
    explicit State(NSWindow& window) : input(window, contentView) {}

    std::shared_ptr<NSView> contentView;
    NSWindowChanges changes;
    bool scheduled = false;  // scheduleDisplay was called
    bool displaying = false;
    double displayTime = 0;
    NSWindowInput input;
    NSCursor cursor = NSCursor::Default;
    NSWindowHost refusingHost;
    NSWindowHost* host = &refusingHost;
    NSWindowDelegate* delegate = nullptr;
    bool isFullScreen = false;
    NSWindowObserver* observer = nullptr;
};

NSWindow::NSWindow() : state_(std::make_shared<State>(*this)) {}

NSWindow::~NSWindow() {
    state_->scheduled = true;  // scheduleDisplay is pure virtual from here on
    setContentView(nullptr);
    NSDisplayPass(*this, state_->changes, nullptr, state_->displayTime).endDepartedAnimations();
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
        viewDidChange(view, NSWindowChanges::kVisibilityStale);
        if (!view.subviews_.empty()) {
            state_->changes.reordered.add(view);
        }
        if (view.layer_->hasAnimations()) {
            state_->changes.animated.add(view);
        }
        if (view.needsFrames_) {
            state_->changes.stepped.add(view);
        }
        didAddView(view);
        for (std::size_t i = view.subviews_.size(); i-- > 0;) {
            subtree.push_back(view.subviews_[i].get());
        }
    }
}

void NSWindow::viewsWillLeave(NSView& root, bool stayInWindow) {
    state_->changes.mustPresent = true;
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
        state_->changes.changed.remove(view);
        state_->changes.reordered.remove(view);
        state_->changes.damaged.remove(view);
        state_->changes.animated.remove(view);
        state_->changes.stepped.remove(view);
        view.window_ = nullptr;
        if (!stayInWindow) {
            view.store_.reset();
            if (view.layer_->hasAnimations()) {
                state_->changes.departed.push_back(subtree[i]);
            }
            state_->input.viewWillLeave(view);
        }
    }
}

void NSWindow::viewDidChange(NSView& view, unsigned changes) {
    view.changes_ |= changes;
    state_->changes.changed.add(view);
    setNeedsPass();
}

void NSWindow::viewAnimationsDidChange(NSView& view) {
    if (view.layer_->hasAnimations()) {
        state_->changes.animated.add(view);
    } else {
        state_->changes.animated.remove(view);
    }
}

void NSWindow::viewNeedsFramesDidChange(NSView& view) {
    if (view.needsFrames_) {
        state_->changes.stepped.add(view);
        setNeedsPass();
    } else {
        state_->changes.stepped.remove(view);
    }
}

void NSWindow::viewNeedsDisplay(NSView& view) {
    state_->changes.damaged.add(view);
    setNeedsPass();
}

void NSWindow::subviewOrderDidChange(NSView& superview) {
    state_->changes.reordered.add(superview);
    setNeedsPass();
}

void NSWindow::backingPropertiesDidChange() {
    state_->changes.mustPresent = true;
    setNeedsPass();
    if (state_->contentView) {
        viewDidChange(*state_->contentView, NSWindowChanges::kVisibilityStale);
    }
}

// ---- the display pass ----

bool NSWindow::isAnimating() const {
    if (!state_->changes.stepped.isEmpty()) {
        return true;
    }
    const double now = CACurrentMediaTime();
    const auto& views = state_->changes.animated.views();
    return std::any_of(views.begin(), views.end(),
                       [now](const NSView* view) { return view->layer()->isAnimating(now); });
}

bool NSWindow::needsDisplay() const {
    return state_->changes.mustPresent || !state_->changes.changed.isEmpty() ||
           !state_->changes.reordered.isEmpty() || !state_->changes.damaged.isEmpty() ||
           isAnimating();
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
    NSDisplayPass pass(*this, state_->changes, state_->observer, time);
    // Changes that the completions make belong to this pass and must not schedule another one.
    state_->scheduled = true;
    {
        const commons::TraceScope updateTrace("update");
        CATimeline::instance().tick(state_->displayTime);
        pass.stepViews();
        pass.endDepartedAnimations();
        state_->input.takeKeyboardFromHiddenView();
    }
    state_->scheduled = false;
    if (needsDisplay()) {
        pass.reportChanges();
        pass.paintDamage();
        state_->changes.mustPresent = false;
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

// ---- input ----

bool NSWindow::sendEvent(const NSEvent& event) {
    const std::shared_ptr<State> state = state_;
    return state->input.sendEvent(event);
}

bool NSWindow::sendUnhandledKey(const NSEvent& event) {
    const std::shared_ptr<State> state = state_;
    return state->input.sendUnhandledKey(event);
}

bool NSWindow::sendDrop(const NSDrop& drop) {
    const std::shared_ptr<State> state = state_;
    return state->input.sendDrop(drop);
}

NSView* NSWindow::firstResponder() const {
    return state_->input.firstResponder();
}

bool NSWindow::makeFirstResponder(NSView* view) {
    return state_->input.makeFirstResponder(view);
}

bool NSWindow::selectKeyView(bool forward, bool wraps) {
    return state_->input.selectKeyView(forward, wraps);
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
