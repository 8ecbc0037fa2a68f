#pragma once

#include <cstddef>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/StrokeReach.h"

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
    // height). The outline's stroke covers nothing farther than `reach` pixels from it. With
    // `exactLengths`, invisible curves keep their length.
    OutlineClipper(const CGAffineTransform& transform, double width, double height, double reach,
                   bool exactLengths);

    void moveTo(CGPoint p);
    void lineTo(CGPoint p);
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p);
    void close();

    // Call one of these after the outline was emitted. Distances are those of `reach`.
    std::vector<std::vector<CGPoint>> filledPolygons();
    std::vector<Run> strokedRuns(const StrokeReach& reach);

private:
    struct Subpath {
        std::vector<CGPoint> points;
        bool closed = false;

        std::size_t lineCount() const { return closed ? points.size() : points.size() - 1; }
        // A point where a line begins or, beyond the last one, where the last line ends.
        CGPoint point(std::size_t i) const { return points[i % points.size()]; }
    };
    struct Curve {
        CGPoint p0, p1, p2, p3;
    };

    void append(CGPoint p) { subpaths_.back().points.push_back(p); }
    bool isOutOfSight(const Curve& curve) const;
    void flatten(const Curve& curve, int depth);
    // Whether the join of the lines that meet at a point may be visible.
    bool isJoinVisible(const Subpath& subpath, std::size_t at, const StrokeReach& reach) const;
    // Finds the part of a line, from 0 to 1, that a run contains; false if there is none.
    bool keep(const Subpath& subpath, std::size_t line, const StrokeReach& reach, double& from,
              double& to) const;
    void appendRuns(const Subpath& subpath, const StrokeReach& reach, std::vector<Run>& runs) const;

    CGAffineTransform transform_;
    CGPoint size_;
    CGPoint min_;  // the box around all points whose stroke may be visible
    CGPoint max_;
    bool exactLengths_;
    std::vector<Subpath> subpaths_;
};

}  // namespace orvane::platform
