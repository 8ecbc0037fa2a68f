#pragma once

#include "orvane/display/graphics/PathFillStyleable.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// An outline of lines and curves, which is drawn between start and finish. All coordinates are
// object coordinates and absolute; the `flag` of the drawing functions has no effect. Angles are in
// degrees.
class ORVANE_EXPORT Path : public virtual Shape, public virtual PathFillStyleable {
public:
    // Begins a new outline. The bounds remain those of the previous outline until finish is called.
    virtual void start() = 0;
    // Updates the bounds and repaints the object. Nothing is repainted before.
    virtual void finish() = 0;

    // Begins a new part of the outline at a point.
    virtual void move(float x, float y, bool flag) = 0;
    // Draws a line to a point.
    virtual void line(float x, float y, bool flag) = 0;
    // Draws a cubic curve to x, y with two control points. The end point comes first.
    virtual void cubicCurve(float x, float y, float c1x, float c1y, float c2x, float c2y,
                            bool flag) = 0;
    // Draws a quadratic curve to x, y with one control point. The end point comes first.
    virtual void quadCurve(float x, float y, float cx, float cy, bool flag) = 0;
    // Draws an arc of the ellipse with the center x, y and the radii rx, ry, which is turned by
    // `rotation`. The arc begins at the angle `start` and extends over `delta`, which may be
    // negative. Both are angles on the circle before it is stretched to the ellipse.
    virtual void arc(float x, float y, float rx, float ry, float rotation, float start,
                     float delta) = 0;
    // Draws a line to the beginning of the current part and closes it.
    virtual void close() = 0;
};

}  // namespace orvane::display::graphics
