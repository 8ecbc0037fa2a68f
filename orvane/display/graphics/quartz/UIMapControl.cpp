#include "orvane/display/graphics/quartz/UIMapControl.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/display/geometry/rounding.h"
#include "orvane/display/geometry/webMercator.h"
#include "orvane/display/native/NMapLayer.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSLog.h"
#include "platform/map/visibleLine.h"

namespace orvane::display::graphics::quartz {

using geometry::Coordinate;
using geometry::toWebMercator;
using platform::CGPoint;
using platform::NSLog;
using platform::NSMapTiles;
using platform::NSMapView;

namespace {

// A marker whose point is farther outside the map is not shown, in points.
constexpr double kMarkerReach = 512;

bool isFinite(const Coordinate& coordinate) {
    return std::isfinite(coordinate.latitude) && std::isfinite(coordinate.longitude);
}

bool accepts(const Coordinate& coordinate, const char* what) {
    const bool isUsable = isFinite(coordinate);
    if (!isUsable) {
        NSLog("MapControl: %s was refused: the coordinate is not finite", what);
    }
    return isUsable;
}

bool isAnimated(native::NMapControl::Motion motion) {
    return motion == native::NMapControl::Motion::Animated;
}

// Why tiles cannot be used; null if they can.
const char* faultOf(const native::NMapControl::Tiles& tiles) {
    using Kind = native::NMapControl::Tiles::Kind;
    const std::string_view place = tiles.location;
    if (tiles.minimumZoom < 0 || tiles.maximumZoom < tiles.minimumZoom ||
        tiles.maximumZoom > NSMapTiles::kMostZoom) {
        return "the zoom levels are from 0 to 24";
    }
    if (tiles.tileSize < 64 || tiles.tileSize > 2048) {
        return "the edge of a tile is from 64 to 2048 points";
    }
    if (tiles.kind != Kind::None && place.empty()) {
        return "there is no location";
    }
    if (tiles.kind == Kind::Server) {
        if (!place.starts_with("http://") && !place.starts_with("https://")) {
            return "the address of a server begins with http:// or https://";
        }
        for (const char* const part : {"{z}", "{x}", "{y}"}) {
            if (place.find(part) == place.npos) {
                return "the address has no {z}, {x} or {y}";
            }
        }
    }
    return nullptr;
}

}  // namespace

std::shared_ptr<native::NativeLayer> UIMapControl::createLayer() {
    auto layer = std::make_shared<native::NMapLayer>([this, weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            layerWillPlace();
        }
    });
    layer_ = layer;
    return layer;
}

void UIMapControl::init() {
    NativeObject::init();
    add(lineGroup_);
    add(markerGroup_);
    const std::weak_ptr<DisplayObject> weak = shared_from_this();
    // Runs a function of this object, if it still exists.
    const auto guarded = [weak](const auto& function) {
        if (const auto self = weak.lock()) {
            commons::guardedCall("exception of a listener for a map", function);
        }
    };
    withView([&](NSMapView& view) {
        view.setHandlers({[this, guarded](NSMapView::Phase phase, bool isByUser) {
                              guarded([&] { didMove(phase, isByUser); });
                          },
                          [this, guarded](CGPoint point) {
                              guarded([&] {
                                  const Point location = placement().corner + Point(point);
                                  notify(TapEvent{getCoordinate(location), location});
                              });
                          },
                          [this, guarded](const std::string& message) {
                              guarded([&] { notify(FailureEvent{message}); });
                          }});
    });
}

void UIMapControl::clear() {
    clearMarkers();
    lines_.clear();
    lineGroup_->clear();
    QuartzClipContainer::clear();
    add(lineGroup_);
    add(markerGroup_);
}

void UIMapControl::validate(const Rect& rect) {
    if (!isVisible()) {
        return;
    }
    const StateScope state(*this);
    applyTransform();
    doValidate(rect);
}

void UIMapControl::withView(const std::function<void(NSMapView&)>& use) const {
    const auto layer = layer_.lock();
    dispatch_ui([&] {
        if (layer && layer->getMapView()) {
            layer->updateSize();
            // Held: a listener may release the layer.
            const std::shared_ptr<NSMapView> view = layer->getMapView();
            use(*view);
        }
    });
}

// ---- the tiles ----

void UIMapControl::setTiles(const Tiles& tiles) {
    if (const char* const fault = faultOf(tiles)) {
        NSLog("MapControl: the tiles of '%s' were refused: %s", tiles.location.c_str(), fault);
        return;
    }
    tiles_ = tiles;
    // The kinds are in the same order.
    withView([&](NSMapView& view) {
        view.setTiles({static_cast<NSMapTiles::Kind>(tiles.kind), tiles.location, tiles.attribution,
                       tiles.minimumZoom, tiles.maximumZoom, tiles.tileSize, tiles.cacheFolder});
    });
}

// ---- what is visible ----

Coordinate UIMapControl::getCenter() const {
    Coordinate center;
    withView([&](const NSMapView& view) { center = view.center(); });
    return center;
}

void UIMapControl::setCenter(const Coordinate& center, Motion motion) {
    moveTo(center, getZoom(), motion, {});
}

double UIMapControl::getZoom() const {
    double zoom = 0;
    withView([&](const NSMapView& view) { zoom = view.zoom(); });
    return zoom;
}

void UIMapControl::setZoom(double zoom, Motion motion) {
    moveTo(getCenter(), zoom, motion, {});
}

void UIMapControl::setZoomLimits(double minimum, double maximum) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum) || minimum > maximum) {
        NSLog("MapControl: the zoom limits %g and %g were refused", minimum, maximum);
        return;
    }
    withView([&](NSMapView& view) { view.setZoomLimits(minimum, maximum); });
}

void UIMapControl::moveTo(const Coordinate& center, double zoom, Motion motion,
                          std::optional<double> duration) {
    if (!accepts(center, "a center")) {
        return;
    }
    if (!std::isfinite(zoom) || (duration && !std::isfinite(*duration))) {
        NSLog("MapControl: a movement was refused: the zoom or the duration is not finite");
        return;
    }
    withView([&](NSMapView& view) { view.moveTo(center, zoom, isAnimated(motion), duration); });
}

void UIMapControl::show(const std::vector<Coordinate>& coordinates, double margin, Motion motion) {
    if (!std::isfinite(margin) || !std::ranges::all_of(coordinates, isFinite)) {
        NSLog("MapControl: coordinates that are not finite cannot be shown");
        return;
    }
    withView([&](NSMapView& view) { view.show(coordinates, margin, isAnimated(motion)); });
}

void UIMapControl::stop() {
    withView([](NSMapView& view) { view.stop(); });
}

bool UIMapControl::isMoving() const {
    bool isMoving = false;
    withView([&](const NSMapView& view) { isMoving = view.isMoving(); });
    return isMoving;
}

auto UIMapControl::getPoint(const Coordinate& coordinate) -> Point {
    Point point;
    if (accepts(coordinate, "a conversion")) {
        withView([&](const NSMapView& view) {
            point = placement().corner + Point(view.pointOf(coordinate));
        });
    }
    return point;
}

Coordinate UIMapControl::getCoordinate(const Point& point) {
    Coordinate coordinate;
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
        NSLog("MapControl: a conversion was refused: the point is not finite");
        return coordinate;
    }
    withView([&](const NSMapView& view) {
        coordinate = view.coordinateAt(CGPoint(point - placement().corner));
    });
    return coordinate;
}

bool UIMapControl::focus() {
    bool isGiven = false;
    withView([&](NSMapView& view) {
        isGiven = view.window() != nullptr && view.window()->makeFirstResponder(&view);
    });
    return isGiven;
}

// ---- markers and paths ----

void UIMapControl::setMarker(const std::shared_ptr<DisplayObject>& marker,
                             const Coordinate& coordinate) {
    if (!marker || !accepts(coordinate, "a marker")) {
        return;
    }
    Marker& entry = markers_[marker];
    entry.coordinate = coordinate;
    entry.place = CGPoint(toWebMercator(coordinate));
    const UpdateLock lock(shared_from_this());
    if (!entry.parent) {
        entry.parent = std::make_shared<QuartzContainer>();
        markerGroup_->add(entry.parent);
    }
    if (marker->getParent() != entry.parent) {
        entry.parent->add(marker);
    }
    place([&](const NSMapView& view) { placeMarker(entry, view); });
}

void UIMapControl::removeMarker(const std::shared_ptr<DisplayObject>& marker) {
    const auto found = markers_.find(marker);
    if (found != markers_.end()) {
        found->second.parent->remove(marker);
        markerGroup_->remove(found->second.parent);
        markers_.erase(found);
    }
}

void UIMapControl::clearMarkers() {
    for (const auto& [marker, entry] : std::exchange(markers_, {})) {
        entry.parent->remove(marker);
    }
    markerGroup_->clear();
}

std::optional<Coordinate> UIMapControl::getMarker(
    const std::shared_ptr<DisplayObject>& marker) const {
    const auto found = markers_.find(marker);
    return found != markers_.end() ? std::optional(found->second.coordinate) : std::nullopt;
}

unsigned UIMapControl::addPath(const Path& path) {
    const unsigned number = ++lastPath_;
    Line& line = lines_[number];
    line.object = std::make_shared<QuartzPath>();
    line.object->setFillColor(0, 0, 0, -1);
    lineGroup_->add(line.object);
    setPath(number, path);
    return number;
}

bool UIMapControl::setPath(unsigned number, const Path& path) {
    const auto found = lines_.find(number);
    if (found == lines_.end()) {
        return false;
    }
    const UpdateLock lock(shared_from_this());
    Line& line = found->second;
    line.places.clear();
    for (const Coordinate& coordinate : path.coordinates) {
        if (accepts(coordinate, "a point of a path")) {
            line.places.emplace_back(CGPoint(toWebMercator(coordinate)));
        }
    }
    platform::unwrap(line.places);
    line.object->setStrokeColor(path.color);
    line.object->setStrokeWidth(static_cast<float>(path.width));
    place([&](const NSMapView& view) { placeLine(line, view); });
    return true;
}

bool UIMapControl::removePath(unsigned number) {
    const auto found = lines_.find(number);
    if (found == lines_.end()) {
        return false;
    }
    lineGroup_->remove(found->second.object);
    lines_.erase(found);
    return true;
}

// ---- places ----

auto UIMapControl::Placement::toChildren(CGPoint point) const -> Point {
    return fromScreen.mapPoint(corner + Point(point));
}

auto UIMapControl::placement() -> Placement {
    const auto layer = layer_.lock();
    const Rect frame = geometry::toInt(layer ? layer->getLayerFrame() : getFrame());
    return {{frame.width, frame.height}, frame.position(), getFullTransformation().inverse()};
}

void UIMapControl::place(const std::function<void(const NSMapView&)>& one) {
    withView(
        [&](const NSMapView& view) { placement() != placement_ ? placeAll(view) : one(view); });
}

// The layer calls this for every change on it, and most do not move the map.
void UIMapControl::layerWillPlace() {
    if (const auto layer = layer_.lock(); layer && placement() != placement_) {
        placeAll(*layer->getMapView());
    }
}

void UIMapControl::didMove(NSMapView::Phase phase, bool isByUser) {
    const auto layer = layer_.lock();
    if (phase == NSMapView::Phase::Changed && layer && layer->getMapView()) {
        placeAll(*layer->getMapView());
    }
    // The phases are in the same order.
    notify(MoveEvent{static_cast<MoveEvent::Phase>(phase), isByUser});
}

void UIMapControl::placeAll(const NSMapView& view) {
    const UpdateLock lock(shared_from_this());
    placement_ = placement();
    for (const auto& [number, line] : lines_) {
        placeLine(line, view);
    }
    for (const auto& [marker, entry] : markers_) {
        placeMarker(entry, view);
    }
}

void UIMapControl::placeMarker(const Marker& marker, const NSMapView& view) const {
    const CGPoint point = view.camera().toView(marker.place);
    const auto isNear = [](double at, double extent) {
        return at > -kMarkerReach && at < extent + kMarkerReach;
    };
    const bool isShown =
        isNear(point.x, placement_.size.width) && isNear(point.y, placement_.size.height);
    marker.parent->setVisible(isShown);
    if (isShown) {
        const Point place = placement_.toChildren(point);
        marker.parent->setTranslate(static_cast<float>(place.x), static_cast<float>(place.y));
    }
}

void UIMapControl::placeLine(const Line& line, const NSMapView& view) const {
    QuartzPath& object = *line.object;
    const double width = std::max(double{object.getStrokeWidth()}, 0.0);
    object.start();
    for (const std::vector<CGPoint>& part :
         platform::visibleLine(line.places, view.camera(), placement_.size, 2 * width + 2)) {
        for (std::size_t i = 0; i < part.size(); ++i) {
            const Point place = placement_.toChildren(part[i]);
            const auto x = static_cast<float>(place.x);
            const auto y = static_cast<float>(place.y);
            i == 0 ? object.move(x, y, false) : object.line(x, y, false);
        }
    }
    object.finish();
}

}  // namespace orvane::display::graphics::quartz
