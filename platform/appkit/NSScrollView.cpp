#include "platform/appkit/NSScrollView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSPanGestureRecognizer.h"
#include "platform/appkit/NSResponders.h"
#include "platform/appkit/NSScrollBars.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/roundToPixel.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

using enum NSScrollDirection;

namespace {

bool isFinite(CGPoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

// With Shift, a wheel for one direction scrolls horizontally.
CGPoint deltaOf(const NSEvent& event) {
    const CGPoint delta = event.scrollingDelta;
    const bool turns = !event.hasPreciseScrollingDeltas && delta.x == 0 &&
                       (event.modifierFlags & kNSEventModifierShift) != 0;
    return turns ? CGPoint{delta.y, 0} : delta;
}

}  // namespace

// ---- the view ----

NSScrollView::NSScrollView() {
    setClipsToBounds(true);
}

NSScrollView::~NSScrollView() = default;

std::shared_ptr<NSScrollView> NSScrollView::create() {
    struct Created : NSScrollView {};
    const std::shared_ptr<NSScrollView> view = std::make_shared<Created>();
    view->addRecognizers();
    view->addBars();
    return view;
}

// The recognizers' functions hold the view only while they run: the view owns the recognizers.
void NSScrollView::addRecognizers() {
    const std::weak_ptr<NSView> self = weak_from_this();
    const auto lock = [self] { return std::static_pointer_cast<NSScrollView>(self.lock()); };
    using Pan = NSPanGestureRecognizer;
    Pan::Handler pan;
    pan.pressed = [lock](CGPoint, double) {
        const auto view = lock();
        if (!view || view->maximumOffset() == CGPoint{}) {
            return Pan::Start::Never;
        }
        return view->pressStopsFling() ? Pan::Start::AtOnce : Pan::Start::AtDistance;
    };
    pan.shouldBegin = [lock](CGPoint way) {
        const auto view = lock();
        return view && view->motion_.canDrag(way);
    };
    pan.began = [lock] {
        if (const auto view = lock()) {
            view->hold(Hold::Pointer);
        }
    };
    pan.moved = [lock](CGPoint delta, CGPoint) {
        if (const auto view = lock()) {
            view->moveBy({-delta.x, -delta.y});
        }
    };
    pan.ended = [lock](CGPoint velocity, double time) {
        if (const auto view = lock()) {
            view->release({-velocity.x, -velocity.y}, time);
        }
    };
    addGestureRecognizer(std::make_shared<Pan>(std::move(pan)));
}

void NSScrollView::addBars() {
    const std::weak_ptr<NSView> self = weak_from_this();
    // Calls a function of the view, if the view still exists.
    const auto call = [self](auto function, auto... arguments) {
        if (const auto view = std::static_pointer_cast<NSScrollView>(self.lock())) {
            ((*view).*function)(arguments...);
        }
    };
    NSScrollBars::Handler bars;
    bars.grasped = [call](bool isHeld) { call(&NSScrollView::holdKnob, isHeld); };
    bars.dragged = [call](Direction direction, double way) {
        call(&NSScrollView::dragKnob, direction, way);
    };
    bars.paged = [call](Direction direction, bool isAfter) {
        call(&NSScrollView::turnPage, direction, isAfter);
    };
    bars.hovered = [call](Direction direction, bool isOver) {
        call(&NSScrollView::openBar, direction, isOver);
    };
    bars_ = std::make_unique<NSScrollBars>(*this, motion_, bars);
}

void NSScrollView::setFrame(const CGRect& frame) {
    const bool isResized = frame.size != bounds().size;
    const CGPoint pages = motion_.targetPages();
    NSView::setFrame(frame);
    if (!isResized) {
        return;
    }
    extentsDidChange();
    if (isPaging() && hold_ == Hold::Nobody) {
        setContentOffset(motion_.offsetOfPages(pages), false);
    }
}

void NSScrollView::viewDidMoveToWindow() {
    NSView::viewDidMoveToWindow();
    if (window() == nullptr) {
        // Nothing will end the gesture that holds the content.
        hold_ = Hold::Nobody;
        bars_->close();
        motion_.stop();
        motionDidChange();
    }
}

// ---- the content ----

void NSScrollView::setDocumentView(const std::shared_ptr<NSView>& view) {
    if (view == document_) {
        return;
    }
    if (document_ && document_->superview() == this) {
        document_->removeFromSuperviewWithoutNeedingDisplay();
    }
    document_ = view;
    if (view) {
        addSubview(view, NSWindowOrderingMode::Below, nullptr);
        placeDocument();
    }
}

void NSScrollView::setContentSize(CGSize size) {
    // The comparisons are false for NaN.
    const bool isUsable = size.width >= 0 && size.height >= 0 && std::isfinite(size.width) &&
                          std::isfinite(size.height);
    if (!isUsable) {
        NSLog(
            "NSScrollView: the content size %g x %g counts as empty where it is negative or not "
            "finite",
            size.width, size.height);
        size = {size.width > 0 && std::isfinite(size.width) ? size.width : 0,
                size.height > 0 && std::isfinite(size.height) ? size.height : 0};
    }
    if (size != contentSize_) {
        contentSize_ = size;
        extentsDidChange();
    }
}

CGSize NSScrollView::contentSize() const {
    return contentSize_;
}

void NSScrollView::setDocumentFrame(const CGRect& frame) {
    documentFrame_ = frame;
    coversContent_ = false;
    placeDocument();
}

void NSScrollView::setScrollable(bool horizontally, bool vertically) {
    if (motion_.setEnabled(horizontally, vertically)) {
        offsetDidChange();
    }
}

void NSScrollView::setPaging(bool paging) {
    motion_.setPaging(paging);
}

// ---- the offset ----

CGPoint NSScrollView::contentOffset() const {
    return motion_.offset();
}

CGPoint NSScrollView::maximumOffset() const {
    return motion_.limit();
}

CGPoint NSScrollView::targetOffset() const {
    return motion_.target();
}

void NSScrollView::setContentOffset(CGPoint offset, bool animated) {
    if (!isFinite(offset)) {
        NSLog("NSScrollView: the offset (%g, %g) is not finite and is not set", offset.x, offset.y);
        return;
    }
    if (animated) {
        motion_.glideTo(offset, CACurrentMediaTime());
        motionDidChange();
        return;
    }
    const CGPoint before = contentOffset();
    motion_.jumpTo(offset);
    if (contentOffset() != before) {
        offsetDidChange();
    }
    motionDidChange();
}

void NSScrollView::scrollRectToVisible(const CGRect& rect, bool animated) {
    if (!isFinite(rect)) {
        NSLog("NSScrollView: a rectangle that is not finite cannot be made visible");
        return;
    }
    const CGPoint offset = motion_.offsetToShow(standardized(rect));
    if (offset != targetOffset()) {
        setContentOffset(offset, animated);
    }
}

void NSScrollView::scrollToVisible(const NSView& view, bool animated) {
    CGRect rect = view.bounds();
    const NSView* inner = &view;
    for (NSView* outer = view.superview(); outer != nullptr; outer = outer->superview()) {
        const CALayer& layer = *inner->layer();
        rect = layer.affineTransform({layer.position(), layer.anchorPoint(), layer.transform()})
                   .apply(rect);
        if (auto* const scroll = dynamic_cast<NSScrollView*>(outer)) {
            const CGPoint offset = scroll->contentOffset();
            rect.origin = {rect.origin.x + offset.x, rect.origin.y + offset.y};
            scroll->scrollRectToVisible(rect, animated);
            const CGPoint target = scroll->targetOffset();
            rect.origin = {rect.origin.x - target.x, rect.origin.y - target.y};
        }
        inner = outer;
    }
}

void NSScrollView::insertContentBefore(CGSize extent) {
    if (!std::isfinite(extent.width) || !std::isfinite(extent.height)) {
        NSLog("NSScrollView: inserted content without a finite size is ignored");
        return;
    }
    contentSize_ = {std::max(contentSize_.width + extent.width, 0.0),
                    std::max(contentSize_.height + extent.height, 0.0)};
    motion_.insertBefore(extent);
    extentsDidChange();
    offsetDidChange();
}

// ---- motion ----

void NSScrollView::step(double time) {
    const std::shared_ptr<NSView> self = shared_from_this();
    const CGPoint before = contentOffset();
    motion_.step(time);
    if (contentOffset() != before) {
        offsetDidChange();
        bars_->show(time);
    }
    if (hold_ != Hold::Knob) {
        bars_->fade(time);
    }
    motionDidChange();
}

CGPoint NSScrollView::moveBy(CGPoint delta) {
    const CGPoint moved = motion_.moveBy(delta);
    if (moved != CGPoint{}) {
        offsetDidChange();
    }
    return moved;
}

void NSScrollView::hold(Hold holder) {
    motion_.stop();
    hold_ = holder;
    motionDidChange();
}

void NSScrollView::release(CGPoint velocity, double time) {
    hold_ = Hold::Nobody;
    motion_.release(velocity, time);
    bars_->show(time);
    motionDidChange();
}

// ---- input ----

bool NSScrollView::scrollWheel(const NSEvent& event) {
    const CGPoint delta = deltaOf(event);
    if (!isFinite(delta)) {
        return false;
    }
    const std::shared_ptr<NSView> self = shared_from_this();
    if (delegate_ != nullptr && delegate_->scrollViewShouldIgnore(*this, event)) {
        return true;
    }
    const bool isTouchpad = event.phase != NSEventPhase::None;
    if (event.phase == NSEventPhase::Began) {
        motion_.stop();
        fingers_.reset();
        fingers_.add({}, event.timestamp);
    }
    CGPoint used;
    if (isTouchpad || event.hasPreciseScrollingDeltas) {
        used = moveBy(delta);
    } else {
        used = motion_.moveByWheel(delta, event.timestamp);
        motionDidChange();
    }
    const bool isUsed = used.x != 0 || used.y != 0;
    if (isUsed) {
        if (isTouchpad) {
            hold_ = Hold::Fingers;
            fingers_.add(used, event.timestamp);
        }
        takeKeyboard();
    }
    bool isHandled = isUsed;
    if (event.phase == NSEventPhase::Ended && hold_ == Hold::Fingers) {
        release(fingers_.velocity(event.timestamp), event.timestamp);
        isHandled = true;
    }
    motionDidChange();
    if (!isHandled) {
        return false;
    }
    NSEvent rest = event;
    rest.scrollingDelta = {delta.x - used.x, delta.y - used.y};
    const bool isChange = event.phase == NSEventPhase::None || event.phase == NSEventPhase::Changed;
    if (!isChange || rest.scrollingDelta != CGPoint{}) {
        NSResponders::offerScroll(superview(), rest);
    }
    return true;
}

// An inner scroll view keeps the keyboard: it passes on the keys that it cannot use.
void NSScrollView::takeKeyboard() {
    if (window() == nullptr) {
        return;
    }
    const NSView* const first = window()->firstResponder();
    const bool isFree =
        first == nullptr ||
        (dynamic_cast<const NSScrollView*>(first) != nullptr && !first->isDescendantOf(*this)) ||
        (delegate_ != nullptr && delegate_->scrollViewMayTakeKeyboard(*this, *first));
    if (isFree) {
        window()->makeFirstResponder(this);
    }
}

bool NSScrollView::pointerEvent(const NSEvent& event) {
    if (event.type == NSEventType::MouseMoved) {
        const CGPoint point = convertPointFromWindow(event.locationInWindow);
        bars_->show(CACurrentMediaTime());
        for (const Direction direction : {Horizontal, Vertical}) {
            openBar(direction, bars_->isNear(direction, point));
        }
    } else if (event.type == NSEventType::MouseExited) {
        openBar(Horizontal, false);
        openBar(Vertical, false);
    }
    return false;
}

bool NSScrollView::acceptsFirstResponder() const {
    return maximumOffset() != CGPoint{};
}

bool NSScrollView::keyDown(const NSEvent& event) {
    if ((event.modifierFlags & ~unsigned{kNSEventModifierShift}) != 0) {
        return false;
    }
    const std::shared_ptr<NSView> self = shared_from_this();
    if (!motion_.moveByKey(event.key, event.modifierFlags != 0, event.timestamp)) {
        return false;
    }
    motionDidChange();
    return true;
}

void NSScrollView::turnPage(Direction direction, bool forward) {
    motion_.turnPage(direction, forward, CACurrentMediaTime());
    motionDidChange();
}

// Returns whether the press takes hold of the content at once: it stops a fling, and is nothing
// else then.
bool NSScrollView::pressStopsFling() {
    const bool isFlung = motion_.isFlung();
    if (isFlung) {
        motion_.stop();
    }
    return isFlung;
}

// The knob stays under the pointer that holds it.
void NSScrollView::openBar(Direction direction, bool isOpen) {
    if (hold_ != Hold::Knob && bars_->setOpen(direction, isOpen, CACurrentMediaTime())) {
        motionDidChange();
    }
}

void NSScrollView::holdKnob(bool isHeld) {
    if (isHeld) {
        hold(Hold::Knob);
    } else {
        release({}, CACurrentMediaTime());
    }
}

void NSScrollView::dragKnob(Direction direction, double way) {
    const double delta = bars_->contentWay(direction, way);
    moveBy(direction == Vertical ? CGPoint{0, delta} : CGPoint{delta, 0});
}

// ---- what follows from changes ----

void NSScrollView::extentsDidChange() {
    if (motion_.setLengths(contentSize_, bounds().size)) {
        offsetDidChange();
    } else {
        placeDocument();
        bars_->place();
    }
}

void NSScrollView::offsetDidChange() {
    placeDocument();
    bars_->show(CACurrentMediaTime());
    bars_->place();
    if (delegate_ != nullptr) {
        delegate_->scrollViewDidScroll(*this);
    }
}

void NSScrollView::motionDidChange() {
    const bool isScrolling = hold_ != Hold::Nobody || motion_.isMoving();
    setNeedsFrames(motion_.isMoving() || bars_->isFading());
    if (isScrolling_ != isScrolling) {
        isScrolling_ = isScrolling;
        if (delegate_ != nullptr) {
            isScrolling ? delegate_->scrollViewWillBeginScrolling(*this)
                        : delegate_->scrollViewDidEndScrolling(*this);
        }
    }
}

void NSScrollView::placeDocument() {
    if (!document_) {
        return;
    }
    const CGSize visible = bounds().size;
    CGRect frame = coversContent_ ? CGRect{{0, 0},
                                           {std::max(contentSize_.width, visible.width),
                                            std::max(contentSize_.height, visible.height)}}
                                  : documentFrame_;
    const CGPoint offset = contentOffset();
    frame.origin = {roundToPixel(frame.origin.x - offset.x, *this),
                    roundToPixel(frame.origin.y - offset.y, *this)};
    if (document_->frame() != frame) {
        document_->setFrame(frame);
    }
}

}  // namespace orvane::platform
