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

void addWedge(CGPoint before, CGPoint corner, CGPoint after, const Line& in, const Line& out,
              ConvexUnion& result) {
    const double turn = in.direction.x * out.direction.y - in.direction.y * out.direction.x;
    const double outer = turn > 0 ? -1 : 1;
    const CGPoint start = moved(corner, in.side, outer);
    const CGPoint end = moved(corner, out.side, outer);
    // The miter limit applies to the angle in pixels.
    const double cosine = ((corner.x - before.x) * (after.x - corner.x) +
                           (corner.y - before.y) * (after.y - corner.y)) /
                          (length(before, corner) * length(corner, after));
    if (2 > StrokeReach::kMiterLimit * StrokeReach::kMiterLimit * (1 + cosine)) {
        result.add(std::array{corner, start, end});
        return;
    }
    const double along = in.direction.x * out.direction.x + in.direction.y * out.direction.y;
    const CGPoint sum{in.side.x + out.side.x, in.side.y + out.side.y};
    result.add(std::array{corner, start, moved(corner, sum, outer / (1 + along)), end});
}

}  // namespace

void addStroke(const OutlineClipper::Run& run, const StrokeReach& reach, ConvexUnion& result) {
    std::vector<CGPoint> points;
    for (const CGPoint& p : run.points) {
        if (points.empty() || length(points.back(), p) > kShortest) {
            points.push_back(p);
        }
    }
    while (run.closed && points.size() > 1 && length(points.back(), points.front()) <= kShortest) {
        points.pop_back();
    }
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
            addWedge(point(i + points.size() - 1), p, q, last, line, result);
        }
        last = line;
    }
}

}  // namespace orvane::platform
