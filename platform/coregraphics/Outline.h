#pragma once

#include <cstdint>
#include <limits>
#include <variant>
#include <vector>

#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

// Subpaths as verbs and their points: one point for Move and Line, three for Curve, none for Close.
// Every subpath begins with a Move, including one that continues after a Close.
struct Segments {
    enum class Verb : std::uint8_t { Move, Line, Curve, Close };

    void moveTo(CGPoint p);
    void lineTo(CGPoint p);
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p);
    void close();

    // Without a current point, the next line or curve begins a subpath.
    bool hasCurrentPoint() const { return !verbs.empty(); }
    CGPoint currentPoint() const;

    template <typename Sink>
    void emit(Sink& sink) const;

    std::vector<Verb> verbs;
    std::vector<CGPoint> points;
    // The box of all points, control points included.
    CGPoint min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    CGPoint max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    bool finite = true;

private:
    void append(CGPoint p);
    void beginIfNeeded(CGPoint p);

    CGPoint start_;
};

// The form of a path that canvases use. Plain shapes, which most outlines are, are stored as such:
// they need no memory of their own, and canvases recognize them. All other outlines are segments.
struct CGPath::Outline {
    struct Rect {
        CGRect rect;
    };
    struct Ellipse {
        CGRect rect;
    };
    struct RoundedRect {
        CGRect rect;
        CGSize corner;
    };

    bool isEmpty() const;
    // Whether every coordinate is finite. An outline with any other coordinate covers nothing.
    bool isFinite() const;
    // Whether the outline is a closed curve without corners, so that round joins do not change it.
    bool isSmooth() const {
        return std::holds_alternative<Ellipse>(form) || std::holds_alternative<RoundedRect>(form);
    }
    // The box of all points, control points included. The outline must not be empty.
    CGRect controlBox() const;
    // Converts the outline to segments, so that more can be added.
    Segments& segments();

    // Passes the outline to the moveTo, lineTo, curveTo and close of `sink`, which take CGPoints.
    template <typename Sink>
    void emit(Sink& sink) const;

    std::variant<Segments, Rect, Ellipse, RoundedRect> form;
};

// The distance of control points as a share of the radius, for the cubic that is closest to a
// quarter of an ellipse: 4/3 (sqrt(2) - 1).
inline constexpr double kCircleByCurves = 0.5522847498307936;

template <typename Sink>
void emitRect(Sink& sink, const CGRect& r) {
    const double right = r.origin.x + r.size.width;
    const double bottom = r.origin.y + r.size.height;
    sink.moveTo(r.origin);
    sink.lineTo({right, r.origin.y});
    sink.lineTo({right, bottom});
    sink.lineTo({r.origin.x, bottom});
    sink.close();
}

template <typename Sink>
void emitRoundedRect(Sink& sink, const CGRect& r, const CGSize& corner) {
    const auto [left, top] = r.origin;
    const double right = left + r.size.width;
    const double bottom = top + r.size.height;
    const double rx = corner.width;
    const double ry = corner.height;
    const double kx = rx * (1 - kCircleByCurves);
    const double ky = ry * (1 - kCircleByCurves);
    sink.moveTo({right, top + ry});
    sink.lineTo({right, bottom - ry});
    sink.curveTo({right, bottom - ky}, {right - kx, bottom}, {right - rx, bottom});
    sink.lineTo({left + rx, bottom});
    sink.curveTo({left + kx, bottom}, {left, bottom - ky}, {left, bottom - ry});
    sink.lineTo({left, top + ry});
    sink.curveTo({left, top + ky}, {left + kx, top}, {left + rx, top});
    sink.lineTo({right - rx, top});
    sink.curveTo({right - kx, top}, {right, top + ky}, {right, top + ry});
    sink.close();
}

template <typename Sink>
void emitEllipse(Sink& sink, const CGRect& r) {
    const double rx = r.size.width / 2;
    const double ry = r.size.height / 2;
    const double cx = r.origin.x + rx;
    const double cy = r.origin.y + ry;
    const double kx = rx * kCircleByCurves;
    const double ky = ry * kCircleByCurves;
    sink.moveTo({cx + rx, cy});
    sink.curveTo({cx + rx, cy + ky}, {cx + kx, cy + ry}, {cx, cy + ry});
    sink.curveTo({cx - kx, cy + ry}, {cx - rx, cy + ky}, {cx - rx, cy});
    sink.curveTo({cx - rx, cy - ky}, {cx - kx, cy - ry}, {cx, cy - ry});
    sink.curveTo({cx + kx, cy - ry}, {cx + rx, cy - ky}, {cx + rx, cy});
    sink.close();
}

template <typename Sink>
void Segments::emit(Sink& sink) const {
    const CGPoint* p = points.data();
    for (const Verb verb : verbs) {
        switch (verb) {
            case Verb::Move:
                sink.moveTo(*p++);
                break;
            case Verb::Line:
                sink.lineTo(*p++);
                break;
            case Verb::Curve:
                sink.curveTo(p[0], p[1], p[2]);
                p += 3;
                break;
            case Verb::Close:
                sink.close();
                break;
        }
    }
}

template <typename Sink>
void CGPath::Outline::emit(Sink& sink) const {
    if (const auto* rect = std::get_if<Rect>(&form)) {
        emitRect(sink, rect->rect);
    } else if (const auto* ellipse = std::get_if<Ellipse>(&form)) {
        emitEllipse(sink, ellipse->rect);
    } else if (const auto* rounded = std::get_if<RoundedRect>(&form)) {
        emitRoundedRect(sink, rounded->rect, rounded->corner);
    } else {
        std::get<Segments>(form).emit(sink);
    }
}

}  // namespace orvane::platform
