#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "orvane/display/geometry/Coordinate.h"
#include "platform/appkit/NSControl.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/map/NSMapCamera.h"
#include "platform/map/NSMapTiles.h"

namespace orvane::platform {

class NSMapAttribution;
class NSMapLikeness;

// A control that shows a map of the earth. The desktop's widget draws the tiles; without one, the
// control paints a plain likeness. Everything else is the control's own, and is the same in every
// window: what is visible, its motion, the pointer, the wheel, the keys and the attribution.
//
// The user drags the map, which goes on with the velocity at the release; zooms with the wheel, two
// presses, plus and minus; and moves it with the arrow keys. What is in front of the map, for
// example markers, belongs into the content view, gets the pointer first, and moves with the map
// only if its owner moves it.
//
// Points are in view coordinates. Coordinates, zooms and texts must be usable: the owner of the
// control refuses others. Main thread only.
class ORVANE_EXPORT NSMapView : public NSControl {
public:
    using Coordinate = display::geometry::Coordinate;

    static constexpr std::string_view kKind = "Map";
    // The color where there is no tile.
    static constexpr CGColor kGround{230.0 / 255, 234.0 / 255, 236.0 / 255, 1};

    // The steps of a movement. Every Began is followed by an Ended.
    enum class Phase {
        Began,    // the map is in motion, or the pointer holds it
        Changed,  // what is visible has changed, also without a motion
        Ended,
    };
    // What the owner does about changes. Each may be empty, and may destroy the control.
    struct Handlers {
        std::function<void(Phase phase, bool isByUser)> moved;
        // A press on the map that nothing in front of it has used.
        std::function<void(CGPoint point)> tapped;
        // Tiles cannot be loaded. Called once for each setTiles; the message is in the log, too.
        std::function<void(const std::string& message)> failed;
    };

    // Use it instead of the constructor: the view's recognizer needs the shared pointer.
    static std::shared_ptr<NSMapView> create();
    ~NSMapView() override;

    std::string_view controlKind() const override { return kKind; }
    bool takesKeysOfWidget() const override { return true; }
    // Replaces all handlers.
    void setHandlers(Handlers handlers) { handlers_ = std::move(handlers); }
    // Puts a view in front of the map and behind the attribution. It has the size of the map.
    void setContentView(const std::shared_ptr<NSView>& view);

    // ---- the tiles ----
    // Sets where the tiles come from, and begins to load them again, also if nothing has changed.
    void setTiles(const NSMapTiles& tiles);
    const NSMapTiles& tiles() const { return tiles_; }
    // Incremented by each setTiles.
    unsigned tilesRevision() const { return tilesRevision_; }
    // Called by the widget when tiles cannot be loaded, with a message for developers.
    void tilesFailed(const std::string& message);

    // ---- what is visible ----
    const NSMapCamera& camera() const { return camera_; }
    Coordinate center() const;
    double zoom() const { return camera_.zoom(); }
    // The zoom is always between these and within what the tiles have.
    void setZoomLimits(double least, double most);
    // Shows a place, as a motion if `isAnimated`; see NSMapCamera::flyTo.
    void moveTo(const Coordinate& center, double zoom, bool isAnimated,
                std::optional<double> duration = {});
    // Shows all of these coordinates, as large as possible, with a margin in points. A view without
    // a size does so when it gets one.
    void show(std::span<const Coordinate> coordinates, double margin, bool isAnimated);
    // Stops the motion where it is.
    void stop();
    // Whether the map moves, or the pointer holds it.
    bool isMoving() const { return isMoving_; }
    CGPoint pointOf(const Coordinate& coordinate) const;
    Coordinate coordinateAt(CGPoint point) const;

    // ---- for the window ----
    void setFrame(const CGRect& frame) override;
    void step(double time) override;
    bool acceptsFirstResponder() const override { return true; }
    bool canBecomeKeyView() const override { return true; }
    bool scrollWheel(const NSEvent& event) override;
    bool keyDown(const NSEvent& event) override;
    void drawRect(const CGRect& dirty) override;

protected:
    NSMapView();

private:
    struct Fit {
        CGPoint center;
        CGSize extent;
        double margin;
    };

    void addRecognizer();
    void hold(bool isHeld);
    void tap(CGPoint point, double time);
    void zoomAt(CGPoint point, double levels, double time);
    void limitZoom();
    void fit(const Fit& fit, bool isAnimated);
    CGPoint middle() const;
    // Calls `change`, then does what follows from a change of what is visible and of the motion.
    void change(const std::function<void()>& change, bool isByUser);
    void motionDidChange();
    void cameraDidChange();
    void notify(Phase phase);

    NSMapCamera camera_;
    NSMapTiles tiles_;
    unsigned tilesRevision_ = 0;
    bool hasFailed_ = false;
    double leastZoom_ = 0;
    double mostZoom_ = NSMapTiles::kMostZoom;
    std::optional<Fit> pendingFit_;
    bool isHeld_ = false;
    bool isMoving_ = false;
    bool isByUser_ = false;  // the last change
    Handlers handlers_;
    std::shared_ptr<NSView> content_;
    std::shared_ptr<NSMapAttribution> attribution_;
    std::unique_ptr<NSMapLikeness> likeness_;
    double tapTime_;  // of the last press that was no drag
    CGPoint tap_;
};

}  // namespace orvane::platform
