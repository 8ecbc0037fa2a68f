#include "platform/appkit/NSScrollView.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSPanGestureRecognizer.h"
#include "platform/appkit/NSResponders.h"
#include "platform/appkit/NSScroller.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

namespace {

using Pace = NSScrollAxis::Pace;

// A page of the keyboard leaves so much of the previous one visible.
constexpr double kPageShare = 0.875;
// Slower than this, in points per second, the content stays where it is released; with paging, it
// goes back to the nearest page.
constexpr double kLeastFling = 60;
constexpr double kPageFling = 250;
// How long bars are shown after the last movement, and how long they fade, in seconds.
constexpr double kBarsShown = 1;
constexpr double kBarsFade = 0.3;

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
        if (!view || (view->axis(Horizontal).limit() <= 0 && view->axis(Vertical).limit() <= 0)) {
            return Pan::Start::Never;
        }
        return view->pointerPressed() ? Pan::Start::AtOnce : Pan::Start::AtDistance;
    };
    pan.shouldBegin = [lock](CGPoint way) {
        const auto view = lock();
        return view && view->canDrag(way);
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
    addBar(Horizontal);
    addBar(Vertical);
}

void NSScrollView::addBar(Direction direction) {
    const std::weak_ptr<NSView> self = weak_from_this();
    // Calls a function of the view, if the view still exists.
    const auto call = [self](auto function, auto... arguments) {
        if (const auto view = std::static_pointer_cast<NSScrollView>(self.lock())) {
            ((*view).*function)(arguments...);
        }
    };
    NSScroller::Handler bar;
    bar.grasped = [call](bool isHeld) { call(&NSScrollView::holdKnob, isHeld); };
    bar.dragged = [call, direction](double way) { call(&NSScrollView::dragKnob, direction, way); };
    bar.paged = [call, direction](bool isAfter) {
        call(&NSScrollView::turnPage, direction, isAfter);
    };
    bar.hovered = [call, direction](bool isOver) {
        call(&NSScrollView::openBar, direction, isOver);
    };
    bars_[direction] = NSScroller::create(direction == Vertical, std::move(bar));
    bars_[direction]->setHidden(true);
    addSubview(bars_[direction]);
}

void NSScrollView::setFrame(const CGRect& frame) {
    const bool isResized = frame.size != bounds().size;
    const std::array<double, 2> pages{axes_[0].pageAt(axes_[0].target()),
                                      axes_[1].pageAt(axes_[1].target())};
    NSView::setFrame(frame);
    if (!isResized) {
        return;
    }
    extentsDidChange();
    if (paging_ && hold_ == Hold::Nobody) {
        setContentOffset({axes_[0].pageOffset(pages[0]), axes_[1].pageOffset(pages[1])}, false);
    }
}

void NSScrollView::viewDidMoveToWindow() {
    NSView::viewDidMoveToWindow();
    if (window() == nullptr) {
        // Nothing will end the gesture that holds the content.
        hold_ = Hold::Nobody;
        isBarOpen_ = {};
        stop();
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
    const bool moved = axis(Horizontal).setEnabled(horizontally);
    if (axis(Vertical).setEnabled(vertically) || moved) {
        offsetDidChange();
    }
}

void NSScrollView::setPaging(bool paging) {
    paging_ = paging;
}

// ---- the offset ----

CGPoint NSScrollView::contentOffset() const {
    return {axis(Horizontal).offset(), axis(Vertical).offset()};
}

CGPoint NSScrollView::maximumOffset() const {
    return {axis(Horizontal).limit(), axis(Vertical).limit()};
}

CGPoint NSScrollView::targetOffset() const {
    return {axis(Horizontal).target(), axis(Vertical).target()};
}

void NSScrollView::setContentOffset(CGPoint offset, bool animated) {
    if (!isFinite(offset)) {
        NSLog("NSScrollView: the offset (%g, %g) is not finite and is not set", offset.x, offset.y);
        return;
    }
    if (animated) {
        const double now = CACurrentMediaTime();
        axis(Horizontal).glideTo(offset.x, now, Pace::Gentle);
        axis(Vertical).glideTo(offset.y, now, Pace::Gentle);
        motionDidChange();
        return;
    }
    const CGPoint before = contentOffset();
    axis(Horizontal).jumpTo(offset.x);
    axis(Vertical).jumpTo(offset.y);
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
    const CGRect wanted = standardized(rect);
    const auto shown = [this](Direction direction, double start, double length) {
        const double from = axis(direction).target();
        const double room = axis(direction).visible() - length;
        return std::min(std::max(from, start - std::max(room, 0.0)), start);
    };
    const CGPoint offset{shown(Horizontal, wanted.origin.x, wanted.size.width),
                         shown(Vertical, wanted.origin.y, wanted.size.height)};
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
    axis(Horizontal).insertBefore(extent.width);
    axis(Vertical).insertBefore(extent.height);
    extentsDidChange();
    offsetDidChange();
}

// ---- motion ----

bool NSScrollView::isMoving() const {
    return axis(Horizontal).isMoving() || axis(Vertical).isMoving();
}

void NSScrollView::stop() {
    axis(Horizontal).stop();
    axis(Vertical).stop();
}

void NSScrollView::step(double time) {
    const std::shared_ptr<NSView> self = shared_from_this();
    const CGPoint before = contentOffset();
    axis(Horizontal).step(time);
    axis(Vertical).step(time);
    if (contentOffset() != before) {
        offsetDidChange();
        showBars(time);
    }
    fadeBars(time);
    motionDidChange();
}

CGPoint NSScrollView::moveBy(CGPoint delta) {
    const CGPoint before = contentOffset();
    if (delta.x != 0) {
        axis(Horizontal).jumpTo(before.x + delta.x);
    }
    if (delta.y != 0) {
        axis(Vertical).jumpTo(before.y + delta.y);
    }
    const CGPoint after = contentOffset();
    if (after != before) {
        offsetDidChange();
    }
    return {after.x - before.x, after.y - before.y};
}

CGPoint NSScrollView::moveByWheel(CGPoint delta, double time) {
    const auto moved = [this, time](Direction direction, double by) {
        if (by == 0 || !axis(direction).canMove(by)) {
            return 0.0;
        }
        if (paging_) {
            return turnPages(direction, by, time);
        }
        const double from = axis(direction).target();
        axis(direction).glideTo(from + by, time, Pace::Quick);
        return axis(direction).target() - from;
    };
    const CGPoint used{moved(Horizontal, delta.x), moved(Vertical, delta.y)};
    motionDidChange();
    return used;
}

// A notch turns one page. Further notches count when that page has mostly appeared.
double NSScrollView::turnPages(Direction direction, double delta, double time) {
    NSScrollAxis& line = axis(direction);
    double& turned = pageWheel_[direction];
    if (std::abs(line.target() - line.offset()) > line.visible() / 4) {
        turned = 0;
        return delta;
    }
    turned = turned * delta < 0 ? delta : turned + delta;
    if (std::abs(turned) >= kNSScrollNotch * 0.99) {
        const double page = line.pageAt(line.target()) + (turned > 0 ? 1 : -1);
        line.glideTo(line.pageOffset(page), time, Pace::Gentle);
        turned = 0;
    }
    return delta;
}

void NSScrollView::hold(Hold holder) {
    stop();
    hold_ = holder;
    motionDidChange();
}

void NSScrollView::release(CGPoint velocity, double time) {
    hold_ = Hold::Nobody;
    const auto fling = [this, time](Direction direction, double speed) {
        if (paging_) {
            comeToRestAtPage(direction, speed, time);
        } else if (std::abs(speed) >= kLeastFling && axis(direction).canMove(speed)) {
            axis(direction).fling(speed, time);
        }
    };
    fling(Horizontal, velocity.x);
    fling(Vertical, velocity.y);
    showBars(time);
    motionDidChange();
}

void NSScrollView::comeToRestAtPage(Direction direction, double velocity, double time) {
    NSScrollAxis& line = axis(direction);
    if (line.visible() <= 0) {
        return;
    }
    const double place = line.offset() / line.visible();
    double page = line.pageAt(line.offset());
    if (std::abs(velocity) >= kPageFling) {
        page = velocity > 0 ? std::floor(place) + 1 : std::max(std::ceil(place) - 1, 0.0);
        line.fling(velocity, time);  // the glide takes the velocity over
    }
    line.glideTo(line.pageOffset(page), time, Pace::Gentle);
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
        stop();
        fingers_.reset();
        fingers_.add({}, event.timestamp);
    }
    CGPoint used;
    if (isTouchpad || event.hasPreciseScrollingDeltas) {
        used = moveBy(delta);
    } else {
        used = moveByWheel(delta, event.timestamp);
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
    const bool isFree = first == nullptr || (dynamic_cast<const NSScrollView*>(first) != nullptr &&
                                             !first->isDescendantOf(*this));
    if (isFree) {
        window()->makeFirstResponder(this);
    }
}

bool NSScrollView::pointerEvent(const NSEvent& event) {
    if (event.type == NSEventType::MouseMoved) {
        const CGPoint point = convertPointFromWindow(event.locationInWindow);
        showBars(CACurrentMediaTime());
        for (const Direction direction : {Horizontal, Vertical}) {
            openBar(direction, isNearBar(direction, point));
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
    const bool shift = (event.modifierFlags & kNSEventModifierShift) != 0;
    if ((event.modifierFlags & ~unsigned{kNSEventModifierShift}) != 0) {
        return false;
    }
    std::string_view key = event.key;
    if (key.starts_with("KP_")) {
        key.remove_prefix(3);
    }
    // Pages, and the two ends, are those of the direction in which the content is read.
    const Direction along =
        axis(Vertical).limit() > 0 || axis(Horizontal).limit() <= 0 ? Vertical : Horizontal;
    constexpr double toTheEnd = 1e18;
    struct Way {
        Direction direction;
        double distance;
    };
    const auto wayOf = [&]() -> Way {
        const double page = axis(along).visible() * kPageShare;
        if (key == "Left" || key == "Right") {
            return {Horizontal, key == "Left" ? -kNSScrollNotch : kNSScrollNotch};
        }
        if (key == "Up" || key == "Down") {
            return {Vertical, key == "Up" ? -kNSScrollNotch : kNSScrollNotch};
        }
        if (key == "Page_Up" || key == "Prior" || (key == "space" && shift)) {
            return {along, -page};
        }
        if (key == "Page_Down" || key == "Next" || key == "space") {
            return {along, page};
        }
        if (key == "Home") {
            return {along, -toTheEnd};
        }
        return {along, key == "End" ? toTheEnd : 0};
    };
    const auto [direction, distance] = wayOf();
    NSScrollAxis& line = axis(direction);
    if (distance == 0 || !line.canMove(distance)) {
        return false;
    }
    const std::shared_ptr<NSView> self = shared_from_this();
    if (paging_ && std::abs(distance) < toTheEnd) {
        turnPage(direction, distance > 0);
    } else {
        line.glideTo(line.target() + distance, event.timestamp, Pace::Quick);
        motionDidChange();
    }
    return true;
}

// Shows the next page, or the one before.
void NSScrollView::turnPage(Direction direction, bool forward) {
    NSScrollAxis& line = axis(direction);
    const double way = forward ? 1 : -1;
    if (paging_) {
        line.glideTo(line.pageOffset(line.pageAt(line.target()) + way), CACurrentMediaTime(),
                     Pace::Gentle);
    } else {
        line.glideTo(line.target() + way * line.visible() * kPageShare, CACurrentMediaTime(),
                     Pace::Quick);
    }
    motionDidChange();
}

// Returns whether the press takes hold of the content at once: it stops a fling, and is nothing
// else then.
bool NSScrollView::pointerPressed() {
    const bool isFlung = axis(Horizontal).isFlung() || axis(Vertical).isFlung();
    if (isFlung) {
        stop();
    }
    return isFlung;
}

bool NSScrollView::canDrag(CGPoint way) const {
    const bool across = std::abs(way.x) > std::abs(way.y);
    const auto canMove = [&](Direction direction) {
        return axis(direction).canMove(direction == Vertical ? -way.y : -way.x);
    };
    if (canMove(across ? Horizontal : Vertical)) {
        return true;
    }
    // A diagonal drag may go in the other direction.
    const double least = std::min(std::abs(way.x), std::abs(way.y));
    const double most = std::max(std::abs(way.x), std::abs(way.y));
    return least > most / 2 && canMove(across ? Vertical : Horizontal);
}

void NSScrollView::holdKnob(bool isHeld) {
    if (isHeld) {
        hold(Hold::Knob);
    } else {
        release({}, CACurrentMediaTime());
    }
}

void NSScrollView::dragKnob(Direction direction, double way) {
    const double travel = trackLength(direction) - knobLength(direction);
    if (travel > 0) {
        const double delta = way / travel * axis(direction).limit();
        moveBy(direction == Vertical ? CGPoint{0, delta} : CGPoint{delta, 0});
    }
}

// ---- what follows from changes ----

void NSScrollView::extentsDidChange() {
    const CGSize visible = bounds().size;
    const bool moved = axis(Horizontal).setLengths(contentSize_.width, visible.width);
    if (axis(Vertical).setLengths(contentSize_.height, visible.height) || moved) {
        offsetDidChange();
    } else {
        placeDocument();
        placeBars();
    }
}

void NSScrollView::offsetDidChange() {
    placeDocument();
    showBars(CACurrentMediaTime());
    placeBars();
    if (delegate_ != nullptr) {
        delegate_->scrollViewDidScroll(*this);
    }
}

void NSScrollView::motionDidChange() {
    const bool isScrolling = hold_ != Hold::Nobody || isMoving();
    const bool isFading = areBarsShown_ && !isBarOpen_[Horizontal] && !isBarOpen_[Vertical];
    setNeedsFrames(isMoving() || isFading);
    if (isScrolling_ != isScrolling) {
        isScrolling_ = isScrolling;
        if (delegate_ != nullptr) {
            isScrolling ? delegate_->scrollViewWillBeginScrolling(*this)
                        : delegate_->scrollViewDidEndScrolling(*this);
        }
    }
}

double NSScrollView::roundToPixel(double length) const {
    const double scale = window() != nullptr ? window()->backingScaleFactor() : 1;
    return std::round(length * scale) / scale;
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
    // On whole pixels, so that the compositor copies pixels as they are.
    frame.origin = {roundToPixel(frame.origin.x - axis(Horizontal).offset()),
                    roundToPixel(frame.origin.y - axis(Vertical).offset())};
    if (document_->frame() != frame) {
        document_->setFrame(frame);
    }
}

// ---- bars ----

double NSScrollView::trackLength(Direction direction) const {
    const Direction other = direction == Vertical ? Horizontal : Vertical;
    const double corner = axis(other).limit() > 0 ? NSScroller::kBreadth : 0;
    return std::max(axis(direction).visible() - corner, 0.0);
}

double NSScrollView::knobLength(Direction direction) const {
    const double track = trackLength(direction);
    const NSScrollAxis& line = axis(direction);
    const double share = line.content() > 0 ? line.visible() / line.content() : 1;
    return std::min(std::max(std::round(track * share), NSScroller::kShortest), track);
}

void NSScrollView::placeBars() {
    for (const Direction direction : {Horizontal, Vertical}) {
        const std::shared_ptr<NSScroller>& bar = bars_[direction];
        const NSScrollAxis& line = axis(direction);
        const bool isShown = areBarsShown_ && line.limit() > 0;
        bar->setHidden(!isShown);
        if (!isShown) {
            continue;
        }
        const double length = knobLength(direction);
        const double start =
            roundToPixel((trackLength(direction) - length) * line.offset() / line.limit());
        bar->place(trackFrame(direction), start, length, isBarOpen_[direction]);
    }
}

CGRect NSScrollView::trackFrame(Direction direction) const {
    const CGSize size = bounds().size;
    constexpr double breadth = NSScroller::kBreadth;
    const double length = trackLength(direction);
    return direction == Vertical ? CGRect{{size.width - breadth, 0}, {breadth, length}}
                                 : CGRect{{0, size.height - breadth}, {length, breadth}};
}

bool NSScrollView::isNearBar(Direction direction, CGPoint point) const {
    const CGRect track = trackFrame(direction);
    return axis(direction).limit() > 0 && point.x >= track.origin.x && point.y >= track.origin.y &&
           point.x < track.origin.x + track.size.width &&
           point.y < track.origin.y + track.size.height;
}

// An open bar does not fade. The knob stays under the pointer that holds it.
void NSScrollView::openBar(Direction direction, bool isOpen) {
    if (isBarOpen_[direction] == isOpen || hold_ == Hold::Knob) {
        return;
    }
    isBarOpen_[direction] = isOpen;
    showBars(CACurrentMediaTime());
    placeBars();
    motionDidChange();
}

void NSScrollView::showBars(double time) {
    if (maximumOffset() == CGPoint{}) {
        return;
    }
    barsShownAt_ = time;
    if (!std::exchange(areBarsShown_, true)) {
        placeBars();
    }
    for (const std::shared_ptr<NSScroller>& bar : bars_) {
        bar->layer()->setOpacity(1);
    }
    setNeedsFrames(true);
}

void NSScrollView::fadeBars(double time) {
    if (!areBarsShown_ || hold_ == Hold::Knob || isBarOpen_[Horizontal] || isBarOpen_[Vertical]) {
        return;
    }
    const double faded = (time - barsShownAt_ - kBarsShown) / kBarsFade;
    for (const std::shared_ptr<NSScroller>& bar : bars_) {
        bar->layer()->setOpacity(std::clamp(1 - faded, 0.0, 1.0));
    }
    if (faded >= 1) {
        areBarsShown_ = false;
        placeBars();
    }
}

}  // namespace orvane::platform
