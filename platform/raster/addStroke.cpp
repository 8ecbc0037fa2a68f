#include "platform/raster/addStroke.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace orvane::platform {

namespace {

using Line = StrokeReach::Line;

// Shorter lines have no direction.
constexpr double kShortest = 1e-6;

CGPoint moved(CGPoint p, CGPoint by, double factor) {
    return {p.x + by.x * factor, p.y + by.y * factor};
}

double length(CGPoint p, CGPoint q) {
    return std::hypot(q.x - p.x, q.y - p.y);
}

double cosineOf(CGPoint a, CGPoint b) {
    return a.x * b.x + a.y * b.y;
}

// Whether the corner between two lines is too sharp for a miter, by the cosine between their
// directions.
bool isBeyond(double limit, double cosine) {
    return 2 > limit * limit * (1 + cosine);
}

// The points without those that are equal to the one before.
std::vector<CGPoint> distinctPoints(const OutlineClipper::Run& run) {
    std::vector<CGPoint> points;
    for (const CGPoint& p : run.points) {
        if (points.empty() || length(points.back(), p) > kShortest) {
            points.push_back(p);
        }
    }
    while (run.closed && points.size() > 1 && length(points.back(), points.front()) <= kShortest) {
        points.pop_back();
    }
    return points;
}

void addWedge(CGPoint corner, const Line& in, const Line& out, ConvexUnion& result) {
    const double turn = in.direction.x * out.direction.y - in.direction.y * out.direction.x;
    const double outer = turn > 0 ? -1 : 1;
    const CGPoint start = moved(corner, in.side, outer);
    const CGPoint end = moved(corner, out.side, outer);
    const double cosine = cosineOf(in.direction, out.direction);
    if (isBeyond(StrokeReach::kMiterLimit, cosine)) {
        result.add(std::array{corner, start, end});
        return;
    }
    const CGPoint sum{in.side.x + out.side.x, in.side.y + out.side.y};
    result.add(std::array{corner, start, moved(corner, sum, outer / (1 + cosine)), end});
}

}  // namespace

void addStroke(const OutlineClipper::Run& run, const StrokeReach& reach, ConvexUnion& result) {
    const std::vector<CGPoint> points = distinctPoints(run);
    if (points.size() < 2) {
        return;
    }
    const std::size_t count = run.closed ? points.size() : points.size() - 1;
    const auto point = [&](std::size_t i) { return points[i % points.size()]; };
    Line last = reach.line(point(count - 1), point(count));
    for (std::size_t i = 0; i < count; ++i) {
        const CGPoint p = point(i);
        const CGPoint q = point(i + 1);
        const Line line = reach.line(p, q);
        result.add(std::array{moved(p, line.side, 1), moved(q, line.side, 1),
                              moved(q, line.side, -1), moved(p, line.side, -1)});
        if (run.closed || i > 0) {
            addWedge(p, last, line, result);
        }
        last = line;
    }
}

bool hasForbiddenMiter(const OutlineClipper::Run& run, const StrokeReach& reach) {
    // Cairo rounds coordinates before it compares.
    constexpr double kAroundLimit = 1.05 * StrokeReach::kMiterLimit;
    const std::vector<CGPoint> points = distinctPoints(run);
    const std::size_t count = points.size();
    for (std::size_t i = run.closed ? 0 : 1; count > 2 && i < (run.closed ? count : count - 1);
         ++i) {
        const CGPoint p = points[(i + count - 1) % count];
        const CGPoint q = points[i];
        const CGPoint r = points[(i + 1) % count];
        const double inUserSpace = cosineOf(reach.line(p, q).direction, reach.line(q, r).direction);
        const double inPixels = cosineOf({q.x - p.x, q.y - p.y}, {r.x - q.x, r.y - q.y}) /
                                (length(p, q) * length(q, r));
        if (isBeyond(StrokeReach::kMiterLimit, inUserSpace) && !isBeyond(kAroundLimit, inPixels)) {
            return true;
        }
    }
    return false;
}

}  // namespace orvane::platform
