#pragma once

#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// Converts the part of an outline that is visible in a small area into straight lines near that
// area. Cairo cannot rasterize distant coordinates (it uses 24.8 fixed point), and invisible parts
// should cost nothing, so large shapes are clipped for one area after another.
//
// A sink for Outline::emit, which receives the outline's own coordinates. The result has the
// outline's coverage inside the area and any coverage outside it.
class OutlineClipper {
public:
    // A sequence of connected lines to be stroked. `distance` is the length of its subpath before
    // it.
    struct Run {
        std::vector<CGPoint> points;
        bool closed;
        // Whether it begins at the end of the last run, where a closed subpath begins.
        bool continuesLast;
        double distance;
    };

    // `transform` maps the outline to the pixels of the area, which extends from (0, 0) to (width,
    // height). Strokes keep lines within `lineReach` of it and joins within `joinReach`. With
    // `exactLengths`, invisible curves keep their length.
    OutlineClipper(const CGAffineTransform& transform, double width, double height,
                   double lineReach, double joinReach, bool exactLengths);

    void moveTo(CGPoint p);
    void lineTo(CGPoint p);
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p);
    void close();

    // Call one of these after the outline was emitted. `pen` maps the unit of distances to pixels.
    std::vector<std::vector<CGPoint>> filledPolygons();
    std::vector<Run> strokedRuns(const CGAffineTransform& pen);

    // The distance of two points in the space that `pen` maps to pixels.
    static double lengthUnder(const CGAffineTransform& pen, CGPoint p, CGPoint q);

private:
    struct Subpath {
        std::vector<CGPoint> points;
        std::vector<bool> corners;  // whether lines or curves of the outline meet at the point
        bool closed = false;
    };
    struct Curve {
        CGPoint p0, p1, p2, p3;
    };

    void append(CGPoint p, bool isCorner);
    bool isOutOfSight(const Curve& curve) const;
    void flatten(const Curve& curve, int depth);
    void appendRuns(const Subpath& subpath, const CGAffineTransform& pen,
                    std::vector<Run>& runs) const;

    CGAffineTransform transform_;
    CGPoint lineMin_;  // the box of the lines that are kept
    CGPoint lineMax_;
    CGPoint min_;  // the box of the joins that are kept
    CGPoint max_;
    bool exactLengths_;
    std::vector<Subpath> subpaths_;
};

}  // namespace orvane::platform
