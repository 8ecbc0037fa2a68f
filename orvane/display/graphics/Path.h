#pragma once

#include "orvane/display/graphics/PathFillStyleable.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// A free outline, drawn between start and finish. Coordinates are absolute: the flag that the
// drawing operations end with is accepted and has no effect.
class ORVANE_EXPORT Path : public virtual Shape, public virtual PathFillStyleable {
public:
    // Begins a new outline. The bounds stay those of the former one until finish.
    virtual void start() = 0;
    // Takes the new outline's bounds and repaints. Nothing repaints before.
    virtual void finish() = 0;

    virtual void move(float x, float y, bool flag) = 0;
    virtual void line(float x, float y, bool flag) = 0;
    // The end point comes before the control points.
    virtual void cubicCurve(float x, float y, float c1x, float c1y, float c2x, float c2y,
                            bool flag) = 0;
    virtual void quadCurve(float x, float y, float cx, float cy, bool flag) = 0;
    // A piece of the ellipse with the centre x, y and the radii rx, ry, turned by `rotation`, from
    // the angle `start` over the signed sweep `delta`. In degrees; the angles are those of the
    // circle before it is stretched.
    virtual void arc(float x, float y, float rx, float ry, float rotation, float start,
                     float delta) = 0;
    virtual void close() = 0;
};

}  // namespace orvane::display::graphics
