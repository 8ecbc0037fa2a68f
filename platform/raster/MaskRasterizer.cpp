#include "platform/raster/MaskRasterizer.h"

#include <cstring>
#include <vector>

#include "platform/coregraphics/Outline.h"
#include "platform/raster/OutlineClipper.h"

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

void addLines(cairo_t* cairo, const std::vector<CGPoint>& points, bool closed) {
    for (const CGPoint& p : points) {
        cairo_line_to(cairo, p.x, p.y);
    }
    if (closed) {
        cairo_close_path(cairo);
    }
    cairo_new_sub_path(cairo);
}

}  // namespace

MaskRasterizer::MaskRasterizer() {
    reset();
}

void MaskRasterizer::reset() {
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, Mask::kSide, Mask::kSide));
    cairo_.reset(cairo_create(surface_.get()));
    cairo_set_source_rgba(cairo_.get(), 0, 0, 0, 1);
    cairo_set_tolerance(cairo_.get(), kTolerance);
}

Mask MaskRasterizer::rasterize(const Request& request) {
    cairo_t* const cairo = cairo_.get();
    cairo_new_path(cairo);
    cairo_set_fill_rule(cairo, request.coverage == Coverage::EOFill ? CAIRO_FILL_RULE_EVEN_ODD
                                                                    : CAIRO_FILL_RULE_WINDING);
    if (request.isPartial) {
        drawPartial(request);
    } else {
        draw(request);
    }
    if (cairo_status(cairo) != CAIRO_STATUS_SUCCESS) {
        // Only exhausted memory leads here. A Cairo context is unusable after an error.
        reset();
        return Mask(nullptr, 0, 0, 0);
    }
    cairo_surface_flush(surface_.get());
    unsigned char* const pixels = cairo_image_surface_get_data(surface_.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
    Mask mask(pixels, request.width, request.height, stride);
    // Clear everything that was painted, including what lies outside a partial mask.
    const int soiledRows = request.isPartial ? Mask::kSide : request.height;
    for (int y = 0; y < soiledRows; ++y) {
        std::memset(pixels + y * stride, 0,
                    static_cast<std::size_t>(request.isPartial ? Mask::kSide : request.width));
    }
    cairo_surface_mark_dirty(surface_.get());
    return mask;
}

// The pen is a circle of width 1 under a transformation that includes the line width, so that no
// combination of width and transformation exceeds Cairo's range.
void MaskRasterizer::setPen(const Request& request, double distance) {
    const StrokeStyle& stroke = request.stroke;
    const CGAffineTransform& pen = request.pen;
    const cairo_matrix_t matrix{pen.a * stroke.width,
                                pen.b * stroke.width,
                                pen.c * stroke.width,
                                pen.d * stroke.width,
                                0,
                                0};
    cairo_set_matrix(cairo_.get(), &matrix);
    cairo_set_line_width(cairo_.get(), 1);
    if (stroke.dash.empty()) {
        cairo_set_dash(cairo_.get(), nullptr, 0, 0);
        return;
    }
    std::vector<double> lengths(stroke.dash.begin(), stroke.dash.end());
    for (double& length : lengths) {
        length /= stroke.width;
    }
    cairo_set_dash(cairo_.get(), lengths.data(), static_cast<int>(lengths.size()),
                   (stroke.dashPhase + distance) / stroke.width);
}

void MaskRasterizer::draw(const Request& request) {
    cairo_t* const cairo = cairo_.get();
    CairoSink sink(cairo, request.transform);
    request.outline.emit(sink);
    if (request.coverage == Coverage::Stroke) {
        setPen(request, 0);
        cairo_stroke(cairo);
        cairo_identity_matrix(cairo);
    } else {
        cairo_fill(cairo);
    }
}

void MaskRasterizer::drawPartial(const Request& request) {
    cairo_t* const cairo = cairo_.get();
    const bool dashed = !request.stroke.dash.empty();
    OutlineClipper clipper(request.transform, request.width, request.height, request.reach, dashed);
    request.outline.emit(clipper);
    if (request.coverage != Coverage::Stroke) {
        for (const std::vector<CGPoint>& polygon : clipper.filledPolygons()) {
            addLines(cairo, polygon, true);
        }
        cairo_fill(cairo);
        return;
    }
    for (const OutlineClipper::Run& run : clipper.strokedRuns(request.pen)) {
        addLines(cairo, run.points, run.closed);
        if (dashed) {
            setPen(request, run.distance);
            cairo_stroke(cairo);
            cairo_identity_matrix(cairo);
        }
    }
    if (!dashed) {
        setPen(request, 0);
        cairo_stroke(cairo);
        cairo_identity_matrix(cairo);
    }
}

}  // namespace orvane::platform
