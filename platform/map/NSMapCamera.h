#pragma once

#include <optional>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// Which part of the world a map shows, and its motion as a function of time. The view of the map
// passes in what the user and the application want, and calls step at each frame; this class knows
// no views and no clock.
//
// Places are those of webMercator.h, and the world repeats itself to the east and the west. View
// coordinates are in points, with the origin at the top left of the view. Times are in seconds.
// Numbers that go in must be finite.
class ORVANE_EXPORT NSMapCamera {
public:
    // ---- the extents ----
    void setSize(CGSize size) { size_ = size; }
    // The edge of a tile, in points.
    void setTileSize(double points) { tileSize_ = points; }
    // The zoom is always between these. A motion beyond them ends.
    void setZoomLimits(double least, double most);
    double leastZoom() const { return leastZoom_; }
    double mostZoom() const { return mostZoom_; }

    // ---- what is visible ----
    // The place in the middle of the view; x and y are from 0 to 1.
    CGPoint center() const { return center_; }
    // 2^zoom tiles of the whole world are next to each other.
    double zoom() const { return zoom_; }
    // The edge of the world, in points.
    double worldSize() const;
    // Of several copies of a place, the one that is nearest to the middle of the view.
    CGPoint toView(CGPoint place) const;
    CGPoint toPlace(CGPoint point) const;
    // The largest zoom at which a rectangle of places fits into the view with a margin.
    double zoomToFit(CGSize extent, double margin) const;

    // ---- motion ----
    // Stops a motion, and shows a place at once.
    void jumpTo(CGPoint center, double zoom);
    // Moves to a place, the shorter way around the world, along the path of van Wijk and Nuij,
    // "Smooth and efficient zooming and panning" (IEEE InfoVis 2003): a long way goes over a view
    // of both ends. Without a duration, it follows from the length of the path.
    void flyTo(CGPoint center, double zoom, double time, std::optional<double> duration = {});
    // Moves the content at once by `delta` points.
    void panBy(CGPoint delta);
    // Moves the content on at a velocity in points per second, which friction reduces.
    void fling(CGPoint velocity, double time);
    // Zooms at once, while the place at a point of the view stays there.
    void zoomBy(double levels, CGPoint anchor);
    // The same as a short motion. Steps that follow one another add up.
    void glideZoomBy(double levels, CGPoint anchor, double time);
    void stop() { motion_ = Motion::None; }
    bool isMoving() const { return motion_ != Motion::None; }
    // Computes what is visible at a time that is not before the beginning of the motion.
    void step(double time);

private:
    enum class Motion { None, Flight, Fling, Zoom };
    // The way of a flight: s goes from 0 to length, see van Wijk and Nuij.
    struct Flight {
        CGPoint from;
        CGPoint to;
        double fromZoom = 0;
        double toZoom = 0;
        double duration = 0;
        double distance = 0;  // between the centers, in worlds
        double extent = 0;    // of the view at the start, in worlds
        double r0 = 0;
        double length = 0;
    };

    void setCenter(CGPoint center);
    void stepFlight(double elapsed);
    void stepFling(double elapsed);
    void stepZoom(double elapsed);

    CGSize size_;
    double tileSize_ = 256;
    double leastZoom_ = 0;
    double mostZoom_ = 19;
    CGPoint center_{0.5, 0.5};
    double zoom_ = 0;

    Motion motion_ = Motion::None;
    double start_ = 0;  // the time at which the motion started
    Flight flight_;
    CGPoint origin_;         // of a fling: the center at the start
    CGPoint velocity_;       // of a fling, in worlds per second
    double zoomStart_ = 0;   // of a zoom
    double zoomTarget_ = 0;  // of a zoom
    CGPoint anchor_;         // of a zoom: the point of the view
};

}  // namespace orvane::platform
