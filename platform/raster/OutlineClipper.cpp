#include "platform/raster/OutlineClipper.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::platform {

namespace {

// The largest distance of a chord from its curve, in pixels.
constexpr double kTolerance = 0.03;
constexpr int kDeepestFlattening = 24;
// If lengths matter, curves are fully divided, into at most this power of two of parts.
constexpr int kDeepestExactFlattening = 12;
// Polygons may extend beyond the area by this much, so that edges added by clipping stay invisible.
constexpr double kMargin = 4;
// Lines that cross the kept box are cut this far outside it.
constexpr double kFarMargin = 4096;

CGPoint between(CGPoint p, CGPoint q, double t) {
    return {p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t};
}

CGPoint middle(CGPoint p, CGPoint q) {
    return {p.x / 2 + q.x / 2, p.y / 2 + q.y / 2};
}

// Clips a polygon to one side of an axis-aligned line.
std::vector<CGPoint> clipped(const std::vector<CGPoint>& polygon, double CGPoint::*axis,
                             double limit, double side) {
    std::vector<CGPoint> result;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const CGPoint p = polygon[i];
        const CGPoint q = polygon[(i + 1) % polygon.size()];
        const double beyondP = (p.*axis - limit) * side;
        const double beyondQ = (q.*axis - limit) * side;
        if (beyondP <= 0) {
            result.push_back(p);
        }
        if ((beyondP <= 0) != (beyondQ <= 0)) {
            CGPoint cut = between(p, q, beyondP / (beyondP - beyondQ));
            cut.*axis = limit;
            result.push_back(cut);
        }
    }
    return result;
}

// Finds the range of t from 0 to 1 for which p + t (q - p) lies inside the box; false if there is
// none.
bool clipLine(CGPoint p, CGPoint q, CGPoint min, CGPoint max, double& from, double& to) {
    from = 0;
    to = 1;
    for (double CGPoint::*axis : {&CGPoint::x, &CGPoint::y}) {
        const double start = p.*axis;
        const double extent = q.*axis - start;
        if (extent == 0) {
            if (start < min.*axis || start > max.*axis) {
                return false;
            }
            continue;
        }
        const double a = (min.*axis - start) / extent;
        const double b = (max.*axis - start) / extent;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    }
    return from <= to;
}

}  // namespace

OutlineClipper::OutlineClipper(const CGAffineTransform& transform, double width, double height,
                               double lineReach, double joinReach, bool exactLengths)
    : transform_(transform),
      lineMin_{-lineReach - kMargin, -lineReach - kMargin},
      lineMax_{width + lineReach + kMargin, height + lineReach + kMargin},
      min_{-joinReach - kMargin, -joinReach - kMargin},
      max_{width + joinReach + kMargin, height + joinReach + kMargin},
      exactLengths_(exactLengths) {}

void OutlineClipper::append(CGPoint p, bool isCorner) {
    Subpath& subpath = subpaths_.back();
    subpath.points.push_back(p);
    subpath.corners.push_back(isCorner);
}

void OutlineClipper::moveTo(CGPoint p) {
    subpaths_.emplace_back();
    append(transform_.apply(p), true);
}

void OutlineClipper::lineTo(CGPoint p) {
    append(transform_.apply(p), true);
}

void OutlineClipper::curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
    flatten({subpaths_.back().points.back(), transform_.apply(c1), transform_.apply(c2),
             transform_.apply(p)},
            0);
    subpaths_.back().corners.back() = true;
}

void OutlineClipper::close() {
    subpaths_.back().closed = true;
}

// Whether the curve lies entirely on one side of the kept box, so that any line can replace it.
bool OutlineClipper::isOutOfSight(const Curve& c) const {
    for (double CGPoint::*axis : {&CGPoint::x, &CGPoint::y}) {
        const auto [low, high] = std::minmax({c.p0.*axis, c.p1.*axis, c.p2.*axis, c.p3.*axis});
        if (high < min_.*axis || low > max_.*axis) {
            return true;
        }
    }
    return false;
}

void OutlineClipper::flatten(const Curve& c, int depth) {
    // The second differences limit the distance between a cubic and its chord.
    const double dx =
        std::max(std::abs(c.p0.x - 2 * c.p1.x + c.p2.x), std::abs(c.p1.x - 2 * c.p2.x + c.p3.x));
    const double dy =
        std::max(std::abs(c.p0.y - 2 * c.p1.y + c.p2.y), std::abs(c.p1.y - 2 * c.p2.y + c.p3.y));
    const bool flat = 0.75 * std::sqrt(dx * dx + dy * dy) <= kTolerance;
    if (flat || depth == (exactLengths_ ? kDeepestExactFlattening : kDeepestFlattening) ||
        (!exactLengths_ && isOutOfSight(c))) {
        append(c.p3, false);
        return;
    }
    const CGPoint a = middle(c.p0, c.p1);
    const CGPoint b = middle(c.p1, c.p2);
    const CGPoint d = middle(c.p2, c.p3);
    const CGPoint ab = middle(a, b);
    const CGPoint bd = middle(b, d);
    const CGPoint center = middle(ab, bd);
    flatten({c.p0, a, ab, center}, depth + 1);
    flatten({center, bd, d, c.p3}, depth + 1);
}

std::vector<std::vector<CGPoint>> OutlineClipper::filledPolygons() {
    std::vector<std::vector<CGPoint>> polygons;
    for (Subpath& subpath : subpaths_) {
        std::vector<CGPoint> polygon = std::move(subpath.points);
        polygon = clipped(polygon, &CGPoint::x, min_.x, -1);
        polygon = clipped(polygon, &CGPoint::x, max_.x, 1);
        polygon = clipped(polygon, &CGPoint::y, min_.y, -1);
        polygon = clipped(polygon, &CGPoint::y, max_.y, 1);
        if (polygon.size() > 2) {
            polygons.push_back(std::move(polygon));
        }
    }
    return polygons;
}

std::vector<OutlineClipper::Run> OutlineClipper::strokedRuns(const CGAffineTransform& pen) {
    std::vector<Run> runs;
    for (const Subpath& subpath : subpaths_) {
        appendRuns(subpath, pen, runs);
    }
    return runs;
}

double OutlineClipper::lengthUnder(const CGAffineTransform& pen, CGPoint p, CGPoint q) {
    const double x = q.x - p.x;
    const double y = q.y - p.y;
    const double across = pen.d * x - pen.c * y;
    const double along = pen.a * y - pen.b * x;
    return std::sqrt(across * across + along * along) / std::abs(pen.determinant());
}

void OutlineClipper::appendRuns(const Subpath& subpath, const CGAffineTransform& pen,
                                std::vector<Run>& runs) const {
    const std::vector<CGPoint>& points = subpath.points;
    const std::size_t count = subpath.closed ? points.size() : points.size() - 1;
    const auto segment = [&](std::size_t i) {
        return std::pair(points[i % points.size()], points[(i + 1) % points.size()]);
    };
    const CGPoint farMin{min_.x - kFarMargin, min_.y - kFarMargin};
    const CGPoint farMax{max_.x + kFarMargin, max_.y + kFarMargin};
    // A join reaches further than the lines that meet in it.
    const auto hasVisibleJoin = [&](std::size_t at) {
        const CGPoint corner = points[at % points.size()];
        return subpath.corners[at % points.size()] && corner.x >= min_.x && corner.x <= max_.x &&
               corner.y >= min_.y && corner.y <= max_.y;
    };
    // Finds the kept part of a segment; false if none of it is visible. Dashed lines are cut as
    // near as possible, because every dash outside the visible part would cost time.
    const auto keep = [&](std::size_t i, double& from, double& to) {
        const auto [p, q] = segment(i);
        const bool hasJoin = hasVisibleJoin(i) || hasVisibleJoin(i + 1);
        if (!clipLine(p, q, lineMin_, lineMax_, from, to) && !hasJoin) {
            return false;
        }
        if (exactLengths_) {
            return !hasJoin || clipLine(p, q, min_, max_, from, to);
        }
        return clipLine(p, q, farMin, farMax, from, to);
    };

    // A closed subpath begins after a segment whose end is not kept, so that the join at its
    // closing point lies inside a run.
    double from, to;
    std::size_t first = 0;
    if (subpath.closed) {
        while (first < count && keep(first, from, to) && to == 1) {
            ++first;
        }
        if (first == count) {
            runs.push_back({points, true, false, 0});
            return;
        }
        first = (first + 1) % count;
    }
    double distance = 0;
    if (exactLengths_) {
        for (std::size_t i = 0; i < first; ++i) {
            const auto [p, q] = segment(i);
            distance += lengthUnder(pen, p, q);
        }
    }
    bool open = false;
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = (first + k) % count;
        // The dash restarts where the subpath began.
        const bool restarts = exactLengths_ && i == 0;
        if (restarts) {
            distance = 0;
        }
        const auto [p, q] = segment(i);
        const double whole = exactLengths_ ? lengthUnder(pen, p, q) : 0;
        if (keep(i, from, to)) {
            if (!open || from > 0 || restarts) {
                runs.push_back({{between(p, q, from)},
                                false,
                                restarts && open && from == 0,
                                distance + whole * from});
            }
            runs.back().points.push_back(between(p, q, to));
            open = to == 1;
        } else {
            open = false;
        }
        distance += whole;
    }
}

}  // namespace orvane::platform
