#include "platform/raster/MaskRasterizer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "platform/coregraphics/Outline.h"
#include "platform/raster/addStroke.h"
#include "platform/raster/dashedRuns.h"

namespace orvane::platform {

namespace {

// The largest distance of a chord from its curve, in pixels. Cairo's default of 0.1 visibly reduces
// the area of small circles.
constexpr double kTolerance = 0.03;

// Passes an outline, in pixels, to Cairo.
class CairoSink {
public:
    CairoSink(cairo_t* cairo, const CGAffineTransform& transform)
        : cairo_(cairo), transform_(transform) {}

    void moveTo(CGPoint p) {
        const CGPoint q = transform_.apply(p);
        cairo_move_to(cairo_, q.x, q.y);
    }
    void lineTo(CGPoint p) {
        const CGPoint q = transform_.apply(p);
        cairo_line_to(cairo_, q.x, q.y);
    }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
        const CGPoint q1 = transform_.apply(c1);
        const CGPoint q2 = transform_.apply(c2);
        const CGPoint q3 = transform_.apply(p);
        cairo_curve_to(cairo_, q1.x, q1.y, q2.x, q2.y, q3.x, q3.y);
    }
    void close() { cairo_close_path(cairo_); }

private:
    cairo_t* cairo_;
    const CGAffineTransform& transform_;
};

// Collects the control polygons of an outline, in pixels, which have its corners.
class ControlPolygons {
public:
    explicit ControlPolygons(const CGAffineTransform& transform) : transform_(transform) {}

    void moveTo(CGPoint p) { runs.push_back({{transform_.apply(p)}, false, false, 0}); }
    void lineTo(CGPoint p) { runs.back().points.push_back(transform_.apply(p)); }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
        lineTo(c1);
        lineTo(c2);
        lineTo(p);
    }
    void close() { runs.back().closed = true; }

    std::vector<OutlineClipper::Run> runs;

private:
    const CGAffineTransform& transform_;
};

void addLines(cairo_t* cairo, const std::vector<CGPoint>& points, bool closed) {
    for (const CGPoint& p : points) {
        cairo_line_to(cairo, p.x, p.y);
    }
    if (closed) {
        cairo_close_path(cairo);
    }
    cairo_new_sub_path(cairo);
}

// Whether the lines are many, and their strips so wide that they overlap: more area than the mask
// has. Cairo's time for such strokes is the product of lines and rows; the union's is much less.
bool isDense(const MaskRasterizer::Request& request, const std::vector<OutlineClipper::Run>& runs) {
    constexpr std::size_t kManyLines = 200;
    constexpr double kWide = 4;  // pixels; narrower strips leave gaps, which cost the union time
    const double width = request.stroke.width * request.pen.norm();
    const double farthest = std::max(request.width, request.height);
    std::size_t lines = 0;
    double area = 0;
    for (const OutlineClipper::Run& run : runs) {
        lines += run.points.size() - 1;
        for (std::size_t i = 1; i < run.points.size(); ++i) {
            const CGPoint p = run.points[i - 1];
            const CGPoint q = run.points[i];
            area += width * std::min(farthest, std::hypot(q.x - p.x, q.y - p.y));
        }
    }
    return lines >= kManyLines && width >= kWide && area > double{Mask::kSide} * Mask::kSide;
}

// Whether circles are ellipses in pixels.
bool isStretched(const CGAffineTransform& pen) {
    const double tolerance = pen.norm() * 1e-6;
    const auto isSmall = [&](double difference) { return std::abs(difference) < tolerance; };
    return !(isSmall(pen.a - pen.d) && isSmall(pen.b + pen.c)) &&
           !(isSmall(pen.a + pen.d) && isSmall(pen.b - pen.c));
}

StrokeReach reachOf(const MaskRasterizer::Request& request) {
    return {request.pen, request.stroke.width / 2, request.reach};
}

// Whether Cairo would draw miters of the lines that are beyond the limit in user space.
bool hasForbiddenMiters(const MaskRasterizer::Request& request,
                        const std::vector<OutlineClipper::Run>& runs) {
    return isStretched(request.pen) && !request.outline.isSmooth() &&
           std::ranges::any_of(runs, [reach = reachOf(request)](const auto& run) {
               return hasForbiddenMiter(run, reach);
           });
}

bool hasForbiddenMiters(const MaskRasterizer::Request& request) {
    if (request.coverage != Coverage::Stroke || !isStretched(request.pen)) {
        return false;
    }
    ControlPolygons polygons(request.transform);
    request.outline.emit(polygons);
    return hasForbiddenMiters(request, polygons.runs);
}

}  // namespace

MaskRasterizer::MaskRasterizer() {
    reset();
}

void MaskRasterizer::reset() {
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, Mask::kSide, Mask::kSide));
    cairo_.reset(cairo_create(surface_.get()));
    cairo_set_tolerance(cairo_.get(), kTolerance);
}

std::optional<Mask> MaskRasterizer::rasterize(const Request& request) {
    cairo_t* const cairo = cairo_.get();
    cairo_new_path(cairo);
    cairo_set_source_rgba(cairo, 0, 0, 0, request.stroke.opacity);
    cairo_set_fill_rule(cairo, request.coverage == Coverage::EOFill ? CAIRO_FILL_RULE_EVEN_ODD
                                                                    : CAIRO_FILL_RULE_WINDING);
    if (!request.isPartial && !hasForbiddenMiters(request)) {
        draw(request);
    } else if (!drawPartial(request)) {
        return Mask(request.height);
    }
    if (cairo_status(cairo) != CAIRO_STATUS_SUCCESS) {
        // A Cairo context is unusable after an error.
        reset();
        return std::nullopt;
    }
    cairo_surface_flush(surface_.get());
    unsigned char* const pixels = cairo_image_surface_get_data(surface_.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
    Mask mask(pixels, request.width, request.height, stride);
    // Clear everything that was painted, including what lies outside a partial mask.
    const int paintedRows = request.isPartial ? Mask::kSide : request.height;
    for (int y = 0; y < paintedRows; ++y) {
        std::memset(pixels + y * stride, 0,
                    static_cast<std::size_t>(request.isPartial ? Mask::kSide : request.width));
    }
    cairo_surface_mark_dirty(surface_.get());
    return mask;
}

// The pen is a circle of width 1 under a transformation that includes the line width, so that no
// combination of width and transformation exceeds Cairo's range.
void MaskRasterizer::stroke(const Request& request, std::span<const double> dash) {
    cairo_t* const cairo = cairo_.get();
    const double width = request.stroke.width;
    const CGAffineTransform& pen = request.pen;
    const cairo_matrix_t matrix{pen.a * width, pen.b * width, pen.c * width, pen.d * width, 0, 0};
    cairo_set_matrix(cairo, &matrix);
    cairo_set_line_width(cairo, 1);
    cairo_set_line_join(cairo,
                        request.outline.isSmooth() ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    std::vector<double> lengths(dash.begin(), dash.end());
    for (double& length : lengths) {
        length /= width;
    }
    cairo_set_dash(cairo, lengths.data(), static_cast<int>(lengths.size()),
                   request.stroke.dashPhase / width);
    cairo_stroke(cairo);
    cairo_identity_matrix(cairo);
}

void MaskRasterizer::draw(const Request& request) {
    CairoSink sink(cairo_.get(), request.transform);
    request.outline.emit(sink);
    if (request.coverage == Coverage::Stroke) {
        stroke(request, request.stroke.dash);
    } else {
        cairo_fill(cairo_.get());
    }
}

bool MaskRasterizer::drawPartial(const Request& request) {
    const bool dashed = !request.stroke.dash.empty();
    OutlineClipper clipper(request.transform, request.width, request.height, request.reach, dashed);
    request.outline.emit(clipper);
    if (request.coverage != Coverage::Stroke) {
        const std::vector<std::vector<CGPoint>> polygons = clipper.filledPolygons();
        for (const std::vector<CGPoint>& polygon : polygons) {
            addLines(cairo_.get(), polygon, true);
        }
        cairo_fill(cairo_.get());
        return !polygons.empty();
    }
    const StrokeReach reach = reachOf(request);
    std::vector<OutlineClipper::Run> runs = clipper.strokedRuns(reach);
    if (dashed) {
        runs = dashedRuns(runs, request.stroke, reach);
    }
    // A union has mitered joins only.
    if (hasForbiddenMiters(request, runs) ||
        (!request.outline.isSmooth() && isDense(request, runs))) {
        strokeAsUnion(request, runs, reach);
        return true;
    }
    for (const OutlineClipper::Run& run : runs) {
        addLines(cairo_.get(), run.points, run.closed);
    }
    if (!runs.empty()) {
        stroke(request, {});
    }
    return !runs.empty();
}

void MaskRasterizer::strokeAsUnion(const Request& request,
                                   const std::vector<OutlineClipper::Run>& runs,
                                   const StrokeReach& reach) {
    if (!union_) {
        union_ = std::make_unique<ConvexUnion>();
    }
    union_->begin(request.width, request.height);
    for (const OutlineClipper::Run& run : runs) {
        addStroke(run, reach, *union_);
    }
    cairo_surface_flush(surface_.get());
    union_->write(cairo_image_surface_get_data(surface_.get()),
                  cairo_image_surface_get_stride(surface_.get()), request.stroke.opacity);
    cairo_surface_mark_dirty(surface_.get());
}

}  // namespace orvane::platform
