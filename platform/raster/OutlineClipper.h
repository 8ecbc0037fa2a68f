#pragma once

#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// Turns the part of an outline that can be seen in a small area into straight lines that stay near
// it. The rasteriser cannot take coordinates far off (its numbers are 24.8 fixed point), and work
// for what nobody sees grows with the outline; so large shapes come through here, area by area.
//
// A sink for Outline::emit, fed with the outline's own coordinates. Inside the area the result
// covers what the outline covers; outside it is anything.
class OutlineClipper {
public:
    // A piece of line to be stroked. `distance` is how far along its subpath it begins.
    struct Run {
        std::vector<CGPoint> points;
        bool closed;
        double distance;
    };

    // `transform` takes the outline to the pixels of the area, 0, 0 to width, height. Strokes keep
    // everything within `reach` of it. With `exactLengths` no curve is shortened out of sight.
    OutlineClipper(const CGAffineTransform& transform, double width, double height, double reach,
                   bool exactLengths);

    void moveTo(CGPoint p);
    void lineTo(CGPoint p);
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p);
    void close();

    // After the outline has been emitted, one of these. `pen` takes the units in which distances
    // are told to pixels.
    std::vector<std::vector<CGPoint>> filledPolygons();
    std::vector<Run> strokedRuns(const CGAffineTransform& pen);

private:
    struct Subpath {
        std::vector<CGPoint> points;
        bool closed = false;
    };
    struct Curve {
        CGPoint p0, p1, p2, p3;
    };

    bool isOutOfSight(const Curve& curve) const;
    void flatten(const Curve& curve, int depth);
    void appendRuns(const Subpath& subpath, const CGAffineTransform& pen,
                    std::vector<Run>& runs) const;

    CGAffineTransform transform_;
    CGPoint min_;  // what is kept
    CGPoint max_;
    bool exactLengths_;
    std::vector<Subpath> subpaths_;
};

}  // namespace orvane::platform
