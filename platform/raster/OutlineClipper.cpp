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

bool isInBox(CGPoint p, CGPoint min, CGPoint max) {
    return p.x >= min.x && p.x <= max.x && p.y >= min.y && p.y <= max.y;
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
                               double reach, bool exactLengths)
    : transform_(transform),
      size_{width, height},
      min_{-reach - kMargin, -reach - kMargin},
      max_{width + reach + kMargin, height + reach + kMargin},
      exactLengths_(exactLengths) {}

void OutlineClipper::moveTo(CGPoint p) {
    subpaths_.emplace_back();
    append(transform_.apply(p));
}

void OutlineClipper::lineTo(CGPoint p) {
    append(transform_.apply(p));
}

void OutlineClipper::curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
    flatten({subpaths_.back().points.back(), transform_.apply(c1), transform_.apply(c2),
             transform_.apply(p)},
            0);
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
        append(c.p3);
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

std::vector<OutlineClipper::Run> OutlineClipper::strokedRuns(const StrokeReach& reach) {
    std::vector<Run> runs;
    for (const Subpath& subpath : subpaths_) {
        appendRuns(subpath, reach, runs);
    }
    return runs;
}

bool OutlineClipper::isJoinVisible(const Subpath& subpath, std::size_t at,
                                   const StrokeReach& reach) const {
    if (!subpath.closed && (at == 0 || at == subpath.lineCount())) {
        return false;
    }
    const CGPoint p = subpath.point(at);
    if (!isInBox(p, min_, max_)) {
        return false;
    }
    const auto line = [&](std::size_t i) {
        return reach.line(subpath.point(i), subpath.point(i + 1));
    };
    const CGPoint join = reach.ofJoin(line(at + subpath.points.size() - 1), line(at));
    return isInBox(p, {-join.x - kMargin, -join.y - kMargin},
                   {size_.x + join.x + kMargin, size_.y + join.y + kMargin});
}

bool OutlineClipper::keep(const Subpath& subpath, std::size_t line, const StrokeReach& reach,
                          double& from, double& to) const {
    const CGPoint p = subpath.point(line);
    const CGPoint q = subpath.point(line + 1);
    if (std::max(p.x, q.x) < min_.x || std::min(p.x, q.x) > max_.x || std::max(p.y, q.y) < min_.y ||
        std::min(p.y, q.y) > max_.y) {
        return false;
    }
    const bool hasJoin =
        isJoinVisible(subpath, line, reach) || isJoinVisible(subpath, line + 1, reach);
    const CGPoint strip = reach.ofStrip(reach.line(p, q));
    if (!clipLine(p, q, {-strip.x - kMargin, -strip.y - kMargin},
                  {size_.x + strip.x + kMargin, size_.y + strip.y + kMargin}, from, to) &&
        !hasJoin) {
        return false;
    }
    // Dashed lines are cut as near as possible, because every dash outside the visible part would
    // cost time.
    if (exactLengths_) {
        return !hasJoin || clipLine(p, q, min_, max_, from, to);
    }
    return clipLine(p, q, {min_.x - kFarMargin, min_.y - kFarMargin},
                    {max_.x + kFarMargin, max_.y + kFarMargin}, from, to);
}

void OutlineClipper::appendRuns(const Subpath& subpath, const StrokeReach& reach,
                                std::vector<Run>& runs) const {
    const std::size_t count = subpath.lineCount();
    const auto length = [&](std::size_t line) {
        return exactLengths_ ? reach.distance(subpath.point(line), subpath.point(line + 1)) : 0;
    };

    // A closed subpath begins after a segment whose end is not kept, so that the join at its
    // closing point lies inside a run.
    double from, to;
    std::size_t first = 0;
    if (subpath.closed) {
        while (first < count && keep(subpath, first, reach, from, to) && to == 1) {
            ++first;
        }
        if (first == count) {
            runs.push_back({subpath.points, true, false, 0});
            return;
        }
        first = (first + 1) % count;
    }
    double distance = 0;
    for (std::size_t i = 0; i < first; ++i) {
        distance += length(i);
    }
    bool open = false;
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = (first + k) % count;
        // The dash restarts where the subpath began.
        const bool restarts = exactLengths_ && i == 0;
        if (restarts) {
            distance = 0;
        }
        const double whole = length(i);
        if (keep(subpath, i, reach, from, to)) {
            const CGPoint p = subpath.point(i);
            const CGPoint q = subpath.point(i + 1);
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
