#pragma once

#include <cstdint>
#include <limits>
#include <variant>
#include <vector>

#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {

// Subpaths as verbs and the points they take: one for Move and Line, three for Curve, none for
// Close. Every subpath begins with a Move, also one that goes on where another was closed.
struct Segments {
    enum class Verb : std::uint8_t { Move, Line, Curve, Close };

    void moveTo(CGPoint p);
    void lineTo(CGPoint p);
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p);
    void close();

    // Nothing to begin from: the next line or curve begins a subpath itself.
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

// The raster form of a path. The plain shapes, which most outlines are, stay what they are: they
// take no storage of their own, and canvases recognise them. Anything else is segments.
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
    // Whether every coordinate is a finite number. An outline that is not is nowhere.
    bool isFinite() const;
    // The box of the points, control points included; for an outline that is not empty.
    CGRect controlBox() const;
    // The same outline as segments, for whoever adds to it.
    Segments& segments();

    // Hands the outline to `sink` by its moveTo, lineTo, curveTo and close, which take CGPoints.
    template <typename Sink>
    void emit(Sink& sink) const;

    std::variant<Segments, Rect, Ellipse, RoundedRect> form;
};

// Corners of rectangles become curves by this share of their radius, the closest that one cubic
// comes to a quarter of an ellipse.
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
