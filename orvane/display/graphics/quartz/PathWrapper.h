#pragma once

#include <vector>

#include "orvane/display/geometry/Rect.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// One outline with its box. A shape rebuilds it once per change; painting only reads it.
class PathWrapper {
public:
    PathWrapper() = default;
    virtual ~PathWrapper() = default;
    PathWrapper(const PathWrapper&) = delete;
    PathWrapper& operator=(const PathWrapper&) = delete;

    // Empties the outline and leaves the bounds.
    void start();
    // Takes the bounds of the outline. An empty one has none, and the earlier bounds stay.
    void finish() { calculateBounds(); }

    // Each replaces the whole outline and, but for setLine, takes its bounds.
    void setRect(float x, float y, float width, float height);
    void setRoundedRect(float x, float y, float width, float height, float rx, float ry);
    // The box of the ellipse as it stands: x, y, width, height. Nothing is centred or doubled;
    // see Ellipse.
    void setEllipse(float cx, float cy, float rx, float ry);
    // The box is cx, cy, 2 r, 2 r: the point is its top left corner; see Circle.
    void setCircle(float cx, float cy, float r);
    void setLine(float x1, float y1, float x2, float y2);
    // x, y, x, y; an odd last number is ignored.
    void setPolyline(const std::vector<float>& points, bool closed);

    // Added to the outline; the bounds wait for finish. End points come before control points.
    void moveTo(float x, float y);
    void lineTo(float x, float y);
    void cubicTo(float x, float y, float c1x, float c1y, float c2x, float c2y);
    void quadTo(float x, float y, float cx, float cy);
    // A piece of the unit circle, stretched by the radii, turned, and moved to the centre x, y.
    // Angles in radians.
    void arcTo(float x, float y, float rx, float ry, double rotation, double start, double delta);
    void close();

    const geometry::Rect<double>& getBounds() const { return bounds_; }
    void setIsEOFill(bool isEOFill) { isEOFill_ = isEOFill; }

    // Puts the outline on the canvas, for a clip.
    void beforeDraw(platform::CGContext& canvas) const;
    // With `fill` false the outline is always stroked, whatever `stroke` says: a gradient shape
    // without a visible stroke gets the canvas's present line inside its clip, and the pictures of
    // applications have it.
    void draw(platform::CGContext& canvas, bool fill, bool stroke) const;

private:
    void calculateBounds();

    geometry::Rect<double> bounds_;
    platform::CGPath path_;
    bool isEOFill_ = false;
};

}  // namespace orvane::display::graphics::quartz
