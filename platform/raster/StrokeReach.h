#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// How far the stroke of lines extends from them, in pixels, including what Cairo's rounding of
// coordinates can add.
//
// A wide stroke consists of a strip for each line and a wedge for each join. Both are much smaller
// than the farthest miter, so a part of a long outline needs only a few of its lines.
class StrokeReach {
public:
    static constexpr double kMiterLimit = 10;

    // A line of the outline as the stroke sees it. Valid for the reach that made it.
    struct Line {
        CGPoint direction;  // of length 1, in the pen's user space
        CGPoint side;       // from the line to the edge of its strip, in pixels
        double doubt;       // the largest error of the direction, in radians
    };

    // `pen` maps user space to pixels and is drawable. `halfWidth` is in user units. No join
    // reaches further than `farthest` pixels.
    StrokeReach(const CGAffineTransform& pen, double halfWidth, double farthest);

    // The line between two points in pixels.
    Line line(CGPoint from, CGPoint to) const;
    // The half width and height of a box around any point of the line that contains the part of the
    // strip nearest to it.
    CGPoint ofStrip(const Line& line) const;
    // The half width and height of a box around the point where two lines meet that contains the
    // wedge of their join.
    CGPoint ofJoin(const Line& in, const Line& out) const;
    // The distance of two points in the pen's user space.
    double distance(CGPoint p, CGPoint q) const;

private:
    CGPoint toUser(CGPoint p, CGPoint q) const;

    CGAffineTransform pen_;
    double determinant_;
    double halfWidth_;
    CGPoint round_;  // the half width and height of a round pen
    double farthest_;
    double rounding_;  // the largest error of the distance of two points, in user units
};

}  // namespace orvane::platform
