#pragma once

#include <vector>

#include "orvane/display/geometry/Rect.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// An outline and its bounds. A shape rebuilds it at each change; painting only reads it.
// Coordinates are object coordinates.
class PathWrapper {
public:
    PathWrapper() = default;
    virtual ~PathWrapper() = default;
    PathWrapper(const PathWrapper&) = delete;
    PathWrapper& operator=(const PathWrapper&) = delete;

    // Empties the outline; the bounds remain.
    void start();
    // Updates the bounds. An empty outline has none, and the previous bounds remain.
    void calculateBounds();
    // Ends an outline: updates the bounds.
    void finish() { calculateBounds(); }

    // These functions replace the whole outline and, except for setLine, update the bounds.
    void setRect(float x, float y, float width, float height);
    void setRoundedRect(float x, float y, float width, float height, float rx, float ry);
    // cx, cy, rx and ry are the box of the ellipse: x, y, width and height; see Ellipse.
    void setEllipse(float cx, float cy, float rx, float ry);
    // The box is cx, cy, 2 r, 2 r: the point is its top left corner; see Circle.
    void setCircle(float cx, float cy, float r);
    void setLine(float x1, float y1, float x2, float y2);
    // `points` holds x, y, x, y ...; an odd last number is ignored.
    void setPolyline(const std::vector<float>& points, bool closed);

    // These functions append to the outline; finish updates the bounds. The end point comes before
    // the control points.
    void moveTo(float x, float y);
    void lineTo(float x, float y);
    void cubicTo(float x, float y, float c1x, float c1y, float c2x, float c2y);
    void quadTo(float x, float y, float cx, float cy);
    // Appends a piece of the unit circle that is scaled by the radii, rotated, and moved to the
    // center x, y. Angles are in radians.
    void arcTo(float x, float y, float rx, float ry, double rotation, double start, double delta);
    void close();

    const geometry::Rect<double>& getBounds() const { return bounds_; }
    // How far the miters of the corners reach beyond the outline: a factor of half the width of the
    // stroke, at least 1.
    double getLongestMiter() const { return longestMiter_; }
    void setIsEOFill(bool isEOFill) { isEOFill_ = isEOFill; }

    // Makes the outline the path of the canvas, for a clip.
    void beforeDraw(platform::CGContext& canvas) const;
    // Fills and strokes the outline. Without `fill` it is always stroked, even if `stroke` is
    // false: a gradient shape without a visible stroke is stroked with the canvas's current style,
    // inside its clip, and applications depend on these pictures.
    void draw(platform::CGContext& canvas, bool fill, bool stroke) const;

private:
    geometry::Rect<double> bounds_;
    platform::CGPath path_;
    double longestMiter_ = 1;
    bool isEOFill_ = false;
};

}  // namespace orvane::display::graphics::quartz
