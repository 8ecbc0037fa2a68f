#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/display/geometry/Coordinate.h"
#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/notification/Listener.h"

namespace orvane::display::native {

// A map of the earth that the user can move and zoom: with the pointer, the wheel, a touchpad and
// the keyboard. In a window the desktop's library for maps draws the tiles; without the library, if
// the host denies maps, and off-screen, the map has a plain ground with the tiles of a folder or a
// grid. All else is the same in every window.
//
// The map fills the bounds that the application sets. It has no tiles at first and contacts nothing
// before the application names where they come from.
//
// Markers are display objects of any kind. The origin of their parent's coordinates is at a
// coordinate of the map, so a marker's own transformation places it relative to that point. Markers
// keep their size when the map is zoomed, are painted above the paths in the order in which they
// were added, and get touches and the pointer before the map does. Objects that the application
// adds itself (ContainerObject::add) are in front of the map, too, and stay where they are.
//
// Points are in screen coordinates: those of events, and of DisplayObject::getFrame. A map in a
// group that is scaled shows more of the earth, not larger tiles. Numbers that are not finite are
// refused with a line in the log. Functions are called on the application's thread, listeners on
// the main thread.
class ORVANE_EXPORT NMapControl : public virtual graphics::ClipContainer {
public:
    using Coordinate = geometry::Coordinate;
    using Point = geometry::Point<double>;

    // Whether a change is shown at once or as a motion.
    enum class Motion { Immediate, Animated };

    // Where the tiles come from. A map of Web Mercator's tiles: 2^zoom in each direction, with the
    // y axis to the south.
    struct Tiles {
        // What the location is.
        enum class Kind {
            None,
            Server,   // an http or https address that contains "{z}", "{x}" and "{y}"
            Folder,   // a folder with files <zoom>/<x>/<y>.png, .jpg or .webp
            MBTiles,  // a file in the format MBTiles, with pictures in these formats
        };

        Kind kind = Kind::None;
        // The address, or the path.
        std::string location = {};
        // Who has made the map: shown in a corner of it, as providers of tiles demand.
        std::string attribution = {};
        // The zoom levels that there are, from 0 to 24.
        int minimumZoom = 0;
        int maximumZoom = 19;
        // The edge of a tile, in points, from 64 to 2048. Its picture may have more pixels.
        int tileSize = 256;
        // Where the tiles of a server are kept, for as long as the server says; if it is empty, the
        // folder "map" in system::getCachesDirectory.
        std::string cacheFolder = {};
    };

    // A line through coordinates, drawn on the map.
    struct Path {
        std::vector<Coordinate> coordinates = {};
        // Alpha in bits 24 to 31, then red, green and blue.
        unsigned color = 0xFF2F6F8F;
        // In points.
        double width = 4;
    };

    // What is visible has changed. Every Began is followed by an Ended; a change without a motion
    // is a Changed alone.
    struct MoveEvent {
        using listener_type = notification::Listener<DisplayObject, MoveEvent, void>;
        // The steps of a movement.
        enum class Phase { Began, Changed, Ended };

        Phase phase = Phase::Changed;
        bool isByUser = false;
    };
    // The user has pressed the map, and neither dragged it nor pressed anything in front of it. The
    // second press of a double click zooms and is no event.
    struct TapEvent {
        using listener_type = notification::Listener<DisplayObject, TapEvent, void>;

        Coordinate coordinate;
        Point location;
    };
    // Tiles cannot be loaded: the server does not answer or refuses, or there is no such folder or
    // file. Sent once after each setTiles, with one line in the log. Tiles that merely do not exist
    // are no failure.
    struct FailureEvent {
        using listener_type = notification::Listener<DisplayObject, FailureEvent, void>;

        std::string message;  // for developers, in English
    };

    // ---- the tiles ----
    // Sets where the tiles come from, and loads them again if it is the same. Tiles that cannot be
    // used are refused with a line in the log.
    virtual void setTiles(const Tiles& tiles) = 0;
    // The tiles that were set.
    virtual Tiles getTiles() const = 0;

    // ---- what is visible ----
    // The coordinate in the middle; (0, 0) at first. A latitude beyond the edge of the map, 85.05
    // degrees, becomes the edge.
    virtual Coordinate getCenter() const = 0;
    // Moves the map to a center, with the zoom that it has.
    virtual void setCenter(const Coordinate& center, Motion motion = Motion::Immediate) = 0;
    // The zoom; 0 at first. One more doubles all lengths; it need not be a whole number.
    virtual double getZoom() const = 0;
    // Zooms around the center.
    virtual void setZoom(double zoom, Motion motion = Motion::Immediate) = 0;
    // Limits the zoom, in addition to the levels that the tiles have.
    virtual void setZoomLimits(double minimum, double maximum) = 0;
    // Moves and zooms the map. A motion over a long way shows both ends in its middle. `duration`
    // is in seconds; without one, it depends on the way.
    virtual void moveTo(const Coordinate& center, double zoom, Motion motion = Motion::Animated,
                        std::optional<double> duration = {}) = 0;
    // Shows all of these coordinates, as large as possible, with a margin in points. A map that has
    // no extent yet does so when it gets one.
    virtual void show(const std::vector<Coordinate>& coordinates, double margin = 32,
                      Motion motion = Motion::Immediate) = 0;
    // Stops the motion where it is.
    virtual void stop() = 0;
    // Whether the map moves, or the pointer holds it.
    virtual bool isMoving() const = 0;

    // Returns where a coordinate is on the screen, also outside the map. The world repeats itself:
    // it is the place that is nearest to the middle of the map.
    virtual Point getPoint(const Coordinate& coordinate) = 0;
    // Returns the coordinate at a point of the screen.
    virtual Coordinate getCoordinate(const Point& point) = 0;

    // ---- markers and paths ----
    // Puts an object on the map, or moves it to another coordinate. An object that is in a
    // container is erased there.
    virtual void setMarker(const std::shared_ptr<DisplayObject>& marker,
                           const Coordinate& coordinate) = 0;
    // Removes a marker. Does nothing for an object that is none.
    virtual void removeMarker(const std::shared_ptr<DisplayObject>& marker) = 0;
    // Removes all markers.
    virtual void clearMarkers() = 0;
    // Returns where a marker is; nothing for an object that is none.
    virtual std::optional<Coordinate> getMarker(
        const std::shared_ptr<DisplayObject>& marker) const = 0;
    // Draws a path above the map and the earlier paths. Returns its number. Between two coordinates
    // the path goes the shorter way around the world.
    virtual unsigned addPath(const Path& path) = 0;
    // Replaces a path. Returns false if there is no path with this number.
    virtual bool setPath(unsigned number, const Path& path) = 0;
    // Removes a path. Returns false if there is no path with this number.
    virtual bool removePath(unsigned number) = 0;

    // ---- the keyboard ----
    // Gives the keyboard to the map. Returns false if it is not on the display.
    virtual bool focus() = 0;
};

}  // namespace orvane::display::native
