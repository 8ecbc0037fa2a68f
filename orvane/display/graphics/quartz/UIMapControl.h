#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "orvane/display/graphics/quartz/QuartzClipContainer.h"
#include "orvane/display/graphics/quartz/QuartzContainer.h"
#include "orvane/display/graphics/quartz/QuartzPath.h"
#include "orvane/display/native/NMapControl.h"
#include "orvane/display/native/NativeObject.h"
#include "platform/map/NSMapView.h"

namespace orvane::display::native {
class NMapLayer;
}  // namespace orvane::display::native

namespace orvane::display::graphics::quartz {

// A map control on a layer of its own, NMapLayer. Its children are a group with the paths, a group
// with the markers, and what the application adds. Paths and markers are placed again whenever what
// is visible changes.
class UIMapControl : public virtual native::NMapControl,
                     public virtual QuartzClipContainer,
                     public virtual native::NativeObject {
public:
    void init() override;
    std::string getDescription() const override { return "UIMapControl"; }
    // Erases the markers and the paths, too.
    void clear() override;
    // Paints the children.
    void validate(const Rect& rect) override;

    void setTiles(const Tiles& tiles) override;
    Tiles getTiles() const override { return tiles_; }
    Coordinate getCenter() const override;
    void setCenter(const Coordinate& center, Motion motion) override;
    double getZoom() const override;
    void setZoom(double zoom, Motion motion) override;
    void setZoomLimits(double minimum, double maximum) override;
    void moveTo(const Coordinate& center, double zoom, Motion motion,
                std::optional<double> duration) override;
    void show(const std::vector<Coordinate>& coordinates, double margin, Motion motion) override;
    void stop() override;
    bool isMoving() const override;
    Point getPoint(const Coordinate& coordinate) override;
    Coordinate getCoordinate(const Point& point) override;

    void setMarker(const std::shared_ptr<DisplayObject>& marker,
                   const Coordinate& coordinate) override;
    void removeMarker(const std::shared_ptr<DisplayObject>& marker) override;
    void clearMarkers() override;
    std::optional<Coordinate> getMarker(
        const std::shared_ptr<DisplayObject>& marker) const override;
    unsigned addPath(const Path& path) override;
    bool setPath(unsigned number, const Path& path) override;
    bool removePath(unsigned number) override;
    bool focus() override;

protected:
    std::shared_ptr<native::NativeLayer> createLayer() override;

private:
    struct Marker {
        Coordinate coordinate;
        platform::CGPoint place;  // in the world, see webMercator.h
        std::shared_ptr<QuartzContainer> parent;
    };
    struct Line {
        std::vector<platform::CGPoint> places;  // in the world
        std::shared_ptr<QuartzPath> object;
    };
    // From the view to the coordinates of the children.
    struct Placement {
        platform::CGSize size;
        Point corner;  // of the view, in screen coordinates
        geometry::Matrix fromScreen;

        friend bool operator==(const Placement&, const Placement&) = default;
        Point toChildren(platform::CGPoint point) const;
    };

    // Calls a function with the view, on the main thread. The view has the size of the control.
    void withView(const std::function<void(platform::NSMapView&)>& use) const;
    Placement placement();
    void layerWillPlace();
    void didMove(platform::NSMapView::Phase phase, bool isByUser);
    // Calls a function that places one thing, or places everything again if that is necessary.
    void place(const std::function<void(const platform::NSMapView&)>& one);
    void placeAll(const platform::NSMapView& view);
    void placeMarker(const Marker& marker, const platform::NSMapView& view) const;
    void placeLine(const Line& line, const platform::NSMapView& view) const;

    Tiles tiles_;
    Placement placement_;  // of the paths and the markers
    std::weak_ptr<native::NMapLayer> layer_;
    std::shared_ptr<QuartzContainer> lineGroup_ = std::make_shared<QuartzContainer>();
    std::shared_ptr<QuartzContainer> markerGroup_ = std::make_shared<QuartzContainer>();
    std::map<std::shared_ptr<DisplayObject>, Marker> markers_;
    std::map<unsigned, Line> lines_;
    unsigned lastPath_ = 0;
};

}  // namespace orvane::display::graphics::quartz
