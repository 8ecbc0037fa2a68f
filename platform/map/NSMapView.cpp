#include "platform/map/NSMapView.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "orvane/display/geometry/webMercator.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSPanGestureRecognizer.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/foundation/NSLog.h"
#include "platform/map/NSMapAttribution.h"
#include "platform/map/NSMapLikeness.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

using display::geometry::fromWebMercator;
using display::geometry::toWebMercator;
using Place = display::geometry::Point<double>;

namespace {

// How much a notch of the wheel zooms, and a point of the fingers' way on a touchpad.
constexpr double kNotchLevels = 0.5;
constexpr double kFingerLevels = 0.01;
// How far an arrow key moves the map, in points.
constexpr double kKeyWay = 64;
// Presses that follow one another within this time and distance are a double click, as in GTK.
constexpr double kDoubleClickTime = 0.4;  // seconds
constexpr double kDoubleClickDistance = 5;
// A release that is slower flings nothing, in points per second.
constexpr double kSlowestFling = 60;

// The smallest interval around numbers on a circle of the length 1: its middle and its length.
std::pair<double, double> arcAround(std::vector<double> numbers) {
    for (double& number : numbers) {
        number -= std::floor(number);
    }
    std::ranges::sort(numbers);
    double gap = numbers.front() + 1 - numbers.back();
    double begin = numbers.front();
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (numbers[i] - numbers[i - 1] > gap) {
            gap = numbers[i] - numbers[i - 1];
            begin = numbers[i];
        }
    }
    return {begin + (1 - gap) / 2, 1 - gap};
}

}  // namespace

NSMapView::NSMapView()
    : attribution_(std::make_shared<NSMapAttribution>()),
      likeness_(std::make_unique<NSMapLikeness>()),
      tapTime_(-kDoubleClickTime) {
    setClipsToBounds(true);
    layer()->setBackgroundColor(kGround);
    addSubview(attribution_);
    limitZoom();
}

NSMapView::~NSMapView() = default;

std::shared_ptr<NSMapView> NSMapView::create() {
    struct Created : NSMapView {};
    const std::shared_ptr<NSMapView> view = std::make_shared<Created>();
    view->addRecognizer();
    return view;
}

// The recognizer's functions hold the view only while they run: the view owns the recognizer.
void NSMapView::addRecognizer() {
    using Pan = NSPanGestureRecognizer;
    const auto lock = [self = weak_from_this()] {
        return std::static_pointer_cast<NSMapView>(self.lock());
    };
    Pan::Handler pan;
    pan.pressed = [lock](CGPoint, double) {
        const auto view = lock();
        return view && view->camera_.isMoving() ? Pan::Start::AtOnce : Pan::Start::AtDistance;
    };
    pan.shouldBegin = [](CGPoint) { return true; };
    pan.began = [lock] {
        if (const auto view = lock()) {
            view->hold(true);
        }
    };
    pan.moved = [lock](CGPoint delta, CGPoint) {
        if (const auto view = lock()) {
            view->change([&] { view->camera_.panBy(delta); }, true);
        }
    };
    pan.ended = [lock](CGPoint velocity, double time) {
        if (const auto view = lock()) {
            if (std::hypot(velocity.x, velocity.y) >= kSlowestFling) {
                view->camera_.fling(velocity, time);
            }
            view->hold(false);
        }
    };
    pan.tapped = [lock](CGPoint point, const NSEvent& event) {
        if (const auto view = lock()) {
            view->tap(point, event.timestamp);
        }
    };
    addGestureRecognizer(std::make_shared<Pan>(std::move(pan)));
}

void NSMapView::setContentView(const std::shared_ptr<NSView>& view) {
    if (content_) {
        content_->removeFromSuperviewWithoutNeedingDisplay();
    }
    content_ = view;
    if (view) {
        view->setFrame(bounds());
        addSubview(view, NSWindowOrderingMode::Below, attribution_.get());
    }
}

void NSMapView::setFrame(const CGRect& frame) {
    const bool isResized = frame.size != bounds().size;
    NSControl::setFrame(frame);
    if (!isResized) {
        return;
    }
    if (content_) {
        content_->setFrame(bounds());
    }
    attribution_->placeIn(frame.size);
    camera_.setSize(frame.size);
    if (pendingFit_ && !isEmpty(bounds())) {
        fit(*std::exchange(pendingFit_, {}), false);
    }
    cameraDidChange();
}

// ---- the tiles ----

void NSMapView::setTiles(const NSMapTiles& tiles) {
    tiles_ = tiles;
    ++tilesRevision_;
    hasFailed_ = false;
    likeness_->reset();
    attribution_->setText(tiles.attribution);
    attribution_->placeIn(bounds().size);
    camera_.setTileSize(tiles.tileSize);
    limitZoom();
    cameraDidChange();
}

void NSMapView::tilesFailed(const std::string& message) {
    if (std::exchange(hasFailed_, true)) {
        return;
    }
    NSLog("A map shows no tiles of '%s': %s", tiles_.location.c_str(), message.c_str());
    if (const auto failed = handlers_.failed) {
        failed(message);
    }
}

// ---- what is visible ----

NSMapView::Coordinate NSMapView::center() const {
    return fromWebMercator(Place(camera_.center()));
}

CGPoint NSMapView::pointOf(const Coordinate& coordinate) const {
    return camera_.toView(CGPoint(toWebMercator(coordinate)));
}

NSMapView::Coordinate NSMapView::coordinateAt(CGPoint point) const {
    return fromWebMercator(Place(camera_.toPlace(point)));
}

CGPoint NSMapView::middle() const {
    return {bounds().size.width / 2, bounds().size.height / 2};
}

void NSMapView::setZoomLimits(double least, double most) {
    leastZoom_ = least;
    mostZoom_ = most;
    change([this] { limitZoom(); }, false);
}

void NSMapView::limitZoom() {
    const double least = std::clamp(leastZoom_, double(tiles_.minimumZoom),  //
                                    double(tiles_.maximumZoom));
    camera_.setZoomLimits(least, std::clamp(mostZoom_, least, double(tiles_.maximumZoom)));
}

void NSMapView::moveTo(const Coordinate& center, double zoom, bool isAnimated,
                       std::optional<double> duration) {
    pendingFit_.reset();
    const CGPoint place(toWebMercator(center));
    change(
        [&] {
            if (isAnimated) {
                camera_.flyTo(place, zoom, CACurrentMediaTime(), duration);
            } else {
                camera_.jumpTo(place, zoom);
            }
        },
        false);
}

void NSMapView::show(std::span<const Coordinate> coordinates, double margin, bool isAnimated) {
    if (coordinates.empty()) {
        return;
    }
    std::vector<double> x;
    std::vector<double> y;
    for (const Coordinate& coordinate : coordinates) {
        const Place place = toWebMercator(coordinate);
        x.push_back(place.x);
        y.push_back(place.y);
    }
    const auto [middleX, width] = arcAround(std::move(x));
    const auto [top, bottom] = std::ranges::minmax(y);
    const Fit wanted{{middleX, (top + bottom) / 2}, {width, bottom - top}, margin};
    if (isEmpty(bounds())) {
        pendingFit_ = wanted;
    } else {
        fit(wanted, isAnimated);
    }
}

void NSMapView::fit(const Fit& fit, bool isAnimated) {
    moveTo(fromWebMercator(Place(fit.center)), camera_.zoomToFit(fit.extent, fit.margin),
           isAnimated);
}

void NSMapView::stop() {
    change([this] { camera_.stop(); }, false);
}

void NSMapView::step(double time) {
    change([&] { camera_.step(time); }, isByUser_);
}

// ---- input ----

void NSMapView::hold(bool isHeld) {
    change(
        [&] {
            isHeld_ = isHeld;
            if (isHeld) {
                camera_.stop();
            }
        },
        true);
}

// The second of two presses at a place zooms.
void NSMapView::tap(CGPoint point, double time) {
    const bool isSecond = time - tapTime_ < kDoubleClickTime &&
                          std::hypot(point.x - tap_.x, point.y - tap_.y) < kDoubleClickDistance;
    tapTime_ = isSecond ? -kDoubleClickTime : time;
    tap_ = point;
    if (isSecond) {
        zoomAt(point, 1, time);
    } else if (const auto tapped = handlers_.tapped) {  // a copy: it may be replaced meanwhile
        tapped(point);
    }
}

void NSMapView::zoomAt(CGPoint point, double levels, double time) {
    change([&] { camera_.glideZoomBy(levels, point, time); }, true);
}

bool NSMapView::scrollWheel(const NSEvent& event) {
    const double delta = event.scrollingDelta.y;
    if (!std::isfinite(delta)) {
        return false;
    }
    const CGPoint point = convertPointFromWindow(event.locationInWindow);
    if (event.hasPreciseScrollingDeltas) {
        change([&] { camera_.zoomBy(-delta * kFingerLevels, point); }, true);
    } else if (delta != 0) {
        zoomAt(point, -delta / kNSScrollNotch * kNotchLevels, event.timestamp);
    }
    return true;
}

bool NSMapView::keyDown(const NSEvent& event) {
    if ((event.modifierFlags & ~unsigned{kNSEventModifierShift}) != 0) {
        return false;
    }
    static constexpr std::pair<std::string_view, CGPoint> kWays[] = {{"Left", {kKeyWay, 0}},
                                                                     {"Right", {-kKeyWay, 0}},
                                                                     {"Up", {0, kKeyWay}},
                                                                     {"Down", {0, -kKeyWay}}};
    for (const auto& [key, way] : kWays) {
        if (event.key == key) {
            change([&, delta = way] { camera_.panBy(delta); }, true);
            return true;
        }
    }
    if (event.characters == "+" || event.characters == "=" || event.key == "KP_Add") {
        zoomAt(middle(), 1, event.timestamp);
        return true;
    }
    if (event.characters == "-" || event.key == "KP_Subtract") {
        zoomAt(middle(), -1, event.timestamp);
        return true;
    }
    return false;
}

// ---- what follows from changes ----

void NSMapView::change(const std::function<void()>& change, bool isByUser) {
    const std::shared_ptr<NSView> self = shared_from_this();
    const CGPoint center = camera_.center();
    const double zoom = camera_.zoom();
    change();
    isByUser_ = isByUser;
    // Began comes before the first change, and Ended after the last one.
    const bool isMoving = isHeld_ || camera_.isMoving();
    if (isMoving) {
        motionDidChange();
    }
    if (camera_.center() != center || camera_.zoom() != zoom) {
        cameraDidChange();
    }
    motionDidChange();
}

void NSMapView::motionDidChange() {
    setNeedsFrames(camera_.isMoving());
    const bool isMoving = isHeld_ || camera_.isMoving();
    if (std::exchange(isMoving_, isMoving) != isMoving) {
        notify(isMoving ? Phase::Began : Phase::Ended);
    }
}

void NSMapView::cameraDidChange() {
    setNeedsDisplayInRect(bounds());
    stateDidChange();
    notify(Phase::Changed);
}

void NSMapView::notify(Phase phase) {
    if (const auto moved = handlers_.moved) {  // a copy: it may be replaced meanwhile
        moved(phase, isByUser_);
    }
}

void NSMapView::drawRect(const CGRect& dirty) {
    if (CGContext* const canvas = NSGraphicsContext::currentGraphicsPort()) {
        likeness_->draw(*canvas, dirty, camera_, tiles_);
    }
}

}  // namespace orvane::platform
