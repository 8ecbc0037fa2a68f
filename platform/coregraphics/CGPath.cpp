#include "platform/coregraphics/CGPath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/coregraphics/Outline.h"

namespace orvane::platform {

namespace {

// Finds the longest miter of an outline, as a factor of half the width of the stroke.
class MiterSink {
public:
    void moveTo(CGPoint p) {
        start_ = current_ = p;
        first_ = last_ = {};
    }
    void lineTo(CGPoint p) { turnTo({p.x - current_.x, p.y - current_.y}, p); }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
        const CGPoint a{c1.x - current_.x, c1.y - current_.y};
        const CGPoint b{c2.x - c1.x, c2.y - c1.y};
        const CGPoint c{p.x - c2.x, p.y - c2.y};
        // A curve that may turn sharply inside.
        if (a.x * b.x + a.y * b.y < 0 || b.x * c.x + b.y * c.y < 0) {
            longest_ = kAroundLimit;
        }
        turnTo(a, c1);
        turnTo(b, c2);
        turnTo(c, p);
    }
    void close() {
        lineTo(start_);
        join(last_, first_);
    }

    double longest() const { return longest_; }

private:
    static constexpr double kLimit = 10;
    // Cairo rounds points to 1/256 of a pixel before it compares a miter with the limit, so it may
    // draw the miter of a corner that is too sharp, and a little more than the limit.
    static constexpr double kAroundLimit = 1.05 * kLimit;

    void turnTo(CGPoint step, CGPoint to) {
        const double length = std::hypot(step.x, step.y);
        if (length > 0) {
            const CGPoint direction{step.x / length, step.y / length};
            join(last_, direction);
            first_ = first_ == CGPoint{} ? direction : first_;
            last_ = direction;
        }
        current_ = to;
    }
    // The corner between two directions. A zero vector is none.
    void join(CGPoint a, CGPoint b) {
        // The sine of half the angle inside the corner, squared.
        const double sine = (1 + a.x * b.x + a.y * b.y) / 2;
        if (a != CGPoint{} && b != CGPoint{}) {
            longest_ =
                std::max(longest_, std::min(1 / std::sqrt(std::max(sine, 0.0)), kAroundLimit));
        }
    }

    double longest_ = 1;
    CGPoint start_;
    CGPoint current_;
    CGPoint first_;  // the direction in which the subpath begins
    CGPoint last_;
};

// Computes the box of an outline. Curves count by their course, not by their control points.
class BoundsSink {
public:
    void moveTo(CGPoint p) { lineTo(p); }
    void lineTo(CGPoint p) {
        include(p);
        current_ = p;
    }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
        includeTurningPoints(current_, c1, c2, p, &CGPoint::x);
        includeTurningPoints(current_, c1, c2, p, &CGPoint::y);
        lineTo(p);
    }
    void close() {}

    CGRect box() const { return {min_, {max_.x - min_.x, max_.y - min_.y}}; }

private:
    void include(CGPoint p) {
        min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y)};
        max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y)};
    }

    // Includes the extrema of the curve in one coordinate: the roots of its derivative inside (0,
    // 1).
    void includeTurningPoints(CGPoint p0, CGPoint p1, CGPoint p2, CGPoint p3,
                              double CGPoint::*axis) {
        const double a = p3.*axis - 3 * p2.*axis + 3 * p1.*axis - p0.*axis;
        const double b = 2 * (p2.*axis - 2 * p1.*axis + p0.*axis);
        const double c = p1.*axis - p0.*axis;
        const auto includeAt = [&](double t) {
            if (t > 0 && t < 1) {
                const double s = 1 - t;
                const double value = s * s * s * p0.*axis + 3 * s * s * t * p1.*axis +
                                     3 * s * t * t * p2.*axis + t * t * t * p3.*axis;
                min_.*axis = std::min(min_.*axis, value);
                max_.*axis = std::max(max_.*axis, value);
            }
        };
        const double discriminant = b * b - 4 * a * c;
        if (discriminant < 0) {
            return;
        }
        // The numerically stable form of the quadratic's roots; also valid when `a` is 0.
        const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
        if (q != 0) {
            includeAt(c / q);
        }
        if (a != 0) {
            includeAt(q / a);
        }
    }

    CGPoint min_{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    CGPoint max_{-std::numeric_limits<double>::infinity(),
                 -std::numeric_limits<double>::infinity()};
    CGPoint current_;
};

}  // namespace

CGPath::CGPath() = default;
CGPath::~CGPath() = default;
CGPath::CGPath(CGPath&&) noexcept = default;
CGPath& CGPath::operator=(CGPath&&) noexcept = default;

std::shared_ptr<const CGPath::Outline> CGPath::outline() const {
    static const auto empty = std::make_shared<const Outline>();
    return outline_ ? outline_ : empty;
}

CGPath::Outline& CGPath::writable() {
    if (!outline_) {
        outline_ = std::make_shared<Outline>();
    } else if (outline_.use_count() > 1) {
        outline_ = std::make_shared<Outline>(*outline_);
    }
    return *outline_;
}

bool CGPath::isEmpty() const {
    return !outline_ || outline_->isEmpty();
}

void CGPath::moveToPoint(double x, double y) {
    writable().segments().moveTo({x, y});
}

void CGPath::addLineToPoint(double x, double y) {
    writable().segments().lineTo({x, y});
}

void CGPath::addCurveToPoint(double c1x, double c1y, double c2x, double c2y, double x, double y) {
    writable().segments().curveTo({c1x, c1y}, {c2x, c2y}, {x, y});
}

void CGPath::addQuadCurveToPoint(double cx, double cy, double x, double y) {
    Segments& segments = writable().segments();
    const CGPoint from = segments.hasCurrentPoint() ? segments.currentPoint() : CGPoint{cx, cy};
    segments.curveTo({from.x + (cx - from.x) * 2 / 3, from.y + (cy - from.y) * 2 / 3},
                     {x + (cx - x) * 2 / 3, y + (cy - y) * 2 / 3}, {x, y});
}

void CGPath::addLines(std::span<const CGPoint> points) {
    if (points.empty()) {
        return;
    }
    Segments& segments = writable().segments();
    segments.moveTo(points.front());
    for (const CGPoint& p : points.subspan(1)) {
        segments.lineTo(p);
    }
}

void CGPath::addRect(const CGRect& rect) {
    if (isEmpty()) {
        writable().form = Outline::Rect{standardized(rect)};
    } else {
        emitRect(writable().segments(), standardized(rect));
    }
}

void CGPath::addRoundedRect(const CGRect& rect, double cornerWidth, double cornerHeight) {
    const CGRect r = standardized(rect);
    // The comparisons keep NaN corners, so that the outline is not finite and covers nothing.
    const double half[] = {r.size.width / 2, r.size.height / 2};
    const double wanted[] = {std::abs(cornerWidth), std::abs(cornerHeight)};
    const CGSize corner{wanted[0] > half[0] ? half[0] : wanted[0],
                        wanted[1] > half[1] ? half[1] : wanted[1]};
    if (corner.width == 0 || corner.height == 0) {
        addRect(r);
    } else if (isEmpty()) {
        writable().form = Outline::RoundedRect{r, corner};
    } else {
        emitRoundedRect(writable().segments(), r, corner);
    }
}

void CGPath::addEllipseInRect(const CGRect& rect) {
    if (isEmpty()) {
        writable().form = Outline::Ellipse{standardized(rect)};
    } else {
        emitEllipse(writable().segments(), standardized(rect));
    }
}

void CGPath::addRelativeArc(const CGAffineTransform& matrix, double x, double y, double radius,
                            double startAngle, double delta) {
    constexpr double kTurn = 2 * std::numbers::pi;
    // More than two turns look like the last two.
    if (std::abs(delta) > 2 * kTurn && std::isfinite(delta)) {
        const double kept = std::copysign(kTurn, delta) + std::fmod(delta, kTurn);
        startAngle += delta - kept;
        delta = kept;
    }
    const auto on = [&](double cosine, double sine) {
        return matrix.apply(CGPoint{x + radius * cosine, y + radius * sine});
    };
    Segments& segments = writable().segments();
    const CGPoint start = on(std::cos(startAngle), std::sin(startAngle));
    if (segments.hasCurrentPoint()) {
        segments.lineTo(start);
    } else {
        segments.moveTo(start);
    }
    if (!std::isfinite(delta)) {
        segments.lineTo({delta, delta});
        return;
    }
    const int pieces = static_cast<int>(std::ceil(std::abs(delta) / (kTurn / 4)));
    for (int i = 0; i < pieces; ++i) {
        const double from = startAngle + delta * i / pieces;
        const double to = startAngle + delta * (i + 1) / pieces;
        const double k = 4.0 / 3.0 * std::tan((to - from) / 4);
        segments.curveTo(
            on(std::cos(from) - k * std::sin(from), std::sin(from) + k * std::cos(from)),
            on(std::cos(to) + k * std::sin(to), std::sin(to) - k * std::cos(to)),
            on(std::cos(to), std::sin(to)));
    }
}

void CGPath::closeSubpath() {
    if (!isEmpty()) {
        writable().segments().close();
    }
}

double CGPath::longestMiter() const {
    if (isEmpty() || !std::holds_alternative<Segments>(outline_->form)) {
        return 1;  // the corners of a rectangle point to those of its box
    }
    MiterSink miters;
    outline_->emit(miters);
    return miters.longest();
}

std::optional<CGRect> CGPath::getPathBoundingBox() const {
    if (isEmpty() || !outline_->isFinite()) {
        return std::nullopt;
    }
    if (!std::holds_alternative<Segments>(outline_->form)) {
        return outline_->controlBox();
    }
    BoundsSink bounds;
    outline_->emit(bounds);
    return bounds.box();
}

}  // namespace orvane::platform
