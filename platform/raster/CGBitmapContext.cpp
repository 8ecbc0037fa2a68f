#include "platform/raster/CGBitmapContext.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/raster/BitmapPainter.h"
#include "platform/raster/BitmapSource.h"
#include "platform/raster/CurrentPath.h"
#include "platform/raster/DrawablePainter.h"
#include "platform/raster/GradientSource.h"
#include "platform/raster/GraphicsState.h"
#include "platform/raster/ImageSource.h"
#include "platform/raster/places.h"

namespace orvane::platform {

namespace {

// Whether an image under this transformation is neither scaled, turned nor flipped.
bool keepsSize(const CGAffineTransform& t) {
    constexpr double kTolerance = 1e-6;
    return std::abs(t.a - 1) < kTolerance && std::abs(t.d - 1) < kTolerance &&
           std::abs(t.b) < kTolerance && std::abs(t.c) < kTolerance;
}

std::shared_ptr<const CGPath::Outline> rectOutline(const CGRect& rect) {
    CGPath path;
    path.addRect(rect);
    return path.outline();
}

}  // namespace

// The state behind the interface: the stack of graphics states, the clip and the current path.
class CGBitmapContext::Rasterizer {
public:
    Rasterizer(const Bitmap& bitmap, std::vector<std::uint32_t> owned,
               const CGAffineTransform& base)
        : owned_(std::move(owned)), painter_(bitmap), drawablePainter_(painter_), states_(1) {
        state().ctm = base;
        state().clipBounds = bitmap.bounds();
    }

    const Bitmap& bitmap() const { return painter_.bitmap(); }
    GraphicsState& state() { return states_[depth_]; }
    CurrentPath& path() { return path_; }

    void save() {
        // Popped states keep their memory for the next save.
        if (++depth_ == states_.size()) {
            states_.push_back(states_.back());
        } else {
            states_[depth_] = states_[depth_ - 1];
        }
    }

    void restore() {
        if (depth_ > 0) {
            --depth_;
            clipShapes_.erase(clipShapes_.begin() + static_cast<std::ptrdiff_t>(state().clipShapes),
                              clipShapes_.end());
        }
    }

    void clip(const ShapeCoverage& shape) {
        GraphicsState& s = state();
        s.clipBounds = s.clipBounds.intersected(shape.bounds());
        if (!shape.covers(s.clipBounds)) {
            clipShapes_.push_back(shape);
            s.clipShapes = clipShapes_.size();
        }
    }

    ShapeCoverage coverageOf(const CurrentPath::Shape& shape, Coverage coverage) {
        const GraphicsState& s = state();
        return {shape.outline,  shape.toPixels, s.ctm, coverage, {s.lineWidth, s.dashPhase, s.dash},
                shape.isLasting};
    }

    void paint(const ShapeCoverage& shape, const GraphicsState::Paint& paint) {
        painter_.paint(shape, paint.premultiplied, currentClip());
    }

    void drawGradient(const CGGradient& gradient, CGPoint start, CGPoint end, unsigned options);
    void drawImage(const CGRect& rect, const CGImage& image);

    void draw(const CGDrawable& drawable) {
        const GraphicsState& s = state();
        drawablePainter_.paint(drawable, textMatrix.concat(s.ctm), s.fill.color, s.stroke.color,
                               currentClip());
    }

    // The text matrix is not part of the graphics state.
    CGAffineTransform textMatrix;

private:
    Clip currentClip() { return {state().clipBounds, clipShapes_}; }

    std::vector<std::uint32_t> owned_;
    BitmapPainter painter_;
    DrawablePainter drawablePainter_;
    std::vector<GraphicsState> states_;
    std::size_t depth_ = 0;
    std::vector<ShapeCoverage> clipShapes_;
    CurrentPath path_;
};

void CGBitmapContext::Rasterizer::drawGradient(const CGGradient& gradient, CGPoint start,
                                               CGPoint end, unsigned options) {
    if (gradient.stops().empty() || !state().ctm.isDrawable()) {
        return;
    }
    painter_.paint(GradientSource(gradient, state().ctm, start, end, options), currentClip());
}

void CGBitmapContext::Rasterizer::drawImage(const CGRect& rect, const CGImage& image) {
    const GraphicsState& s = state();
    // The image's rows run from the largest y of the rectangle to its origin.
    const CGAffineTransform toRect{
        rect.size.width / image.width(), 0, 0, -rect.size.height / image.height(), rect.origin.x,
        rect.origin.y + rect.size.height};
    const CGAffineTransform toPixels = toRect.concat(s.ctm);
    if (!s.ctm.isDrawable() || !toPixels.isDrawable()) {
        return;
    }
    const Clip clip = currentClip();
    if (keepsSize(toPixels)) {
        // Copy pixel by pixel, at the nearest whole pixels.
        const auto whole = [](double v) {
            return static_cast<int>(
                std::floor(roundedTo(kPlacesPerPixel, std::clamp(v, -1e6, 1e6)) + 0.5));
        };
        const int left = whole(toPixels.tx);
        const int top = whole(toPixels.ty);
        const PixelRect area =
            clip.bounds.intersected({left, top, left + image.width(), top + image.height()});
        if (area.isEmpty()) {
            return;
        }
        if (BitmapPainter::isCutBy(clip, area)) {
            painter_.paint(BitmapSource(image.pixels().data(), image.width(), left, top),
                           {area, clip.shapes});
        } else {
            paintImage(bitmap(), image, left, top, area);
        }
        return;
    }
    const ShapeCoverage shape(rectOutline(rect), s.ctm, s.ctm, Coverage::Fill, {}, true);
    if (clip.bounds.intersected(shape.bounds()).isEmpty()) {
        return;
    }
    const ImageSource source(image, toPixels);
    if (source.isValid()) {
        painter_.paint(shape, source, clip);
    }
}

CGBitmapContext::CGBitmapContext(int width, int height, const CGAffineTransform& base) {
    if (!isSensibleImageSize(width, height)) {
        width = 0;
        height = 0;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    const Bitmap bitmap{pixels.data(), width, height, width};
    rasterizer_ = std::make_unique<Rasterizer>(bitmap, std::move(pixels), base);
}

CGBitmapContext::CGBitmapContext(std::uint32_t* pixels, int width, int height,
                                 std::size_t bytesPerRow, const CGAffineTransform& base) {
    const bool fits = pixels != nullptr && isSensibleImageSize(width, height) &&
                      bytesPerRow % 4 == 0 && bytesPerRow / 4 >= static_cast<std::size_t>(width);
    const Bitmap bitmap =
        fits ? Bitmap{pixels, width, height, static_cast<std::ptrdiff_t>(bytesPerRow / 4)}
             : Bitmap{};
    rasterizer_ = std::make_unique<Rasterizer>(bitmap, std::vector<std::uint32_t>{}, base);
}

CGBitmapContext::~CGBitmapContext() = default;

int CGBitmapContext::width() const {
    return rasterizer_->bitmap().width;
}

int CGBitmapContext::height() const {
    return rasterizer_->bitmap().height;
}

std::size_t CGBitmapContext::bytesPerRow() const {
    return static_cast<std::size_t>(rasterizer_->bitmap().stride) * 4;
}

std::uint32_t* CGBitmapContext::pixels() {
    return rasterizer_->bitmap().pixels;
}

const std::uint32_t* CGBitmapContext::pixels() const {
    return rasterizer_->bitmap().pixels;
}

void CGBitmapContext::clearRect(const CGRect& rect) {
    const GraphicsState& s = rasterizer_->state();
    const ShapeCoverage shape(rectOutline(rect), s.ctm, s.ctm, Coverage::Fill, {}, true);
    const PixelRect area = s.clipBounds.intersected(shape.bounds());
    if (area.isEmpty()) {
        return;
    }
    for (int y = area.top; y < area.bottom; ++y) {
        std::fill_n(rasterizer_->bitmap().at(area.left, y), area.width(), 0u);
    }
}

std::shared_ptr<const CGImage> CGBitmapContext::createImage() const {
    const Bitmap& bitmap = rasterizer_->bitmap();
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(bitmap.width) *
                   static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y) {
        const std::uint32_t* row = bitmap.at(0, y);
        pixels.insert(pixels.end(), row, row + bitmap.width);
    }
    return CGImage::createWithPixels(bitmap.width, bitmap.height, std::move(pixels));
}

bool CGBitmapContext::writePNG(const std::string& filename) const {
    const std::shared_ptr<const CGImage> image = createImage();
    return image && image->writePNG(filename);
}

void CGBitmapContext::saveGState() {
    rasterizer_->save();
}

void CGBitmapContext::restoreGState() {
    rasterizer_->restore();
}

void CGBitmapContext::translateCTM(double tx, double ty) {
    GraphicsState& s = rasterizer_->state();
    s.ctm = s.ctm.translate(tx, ty);
}

void CGBitmapContext::scaleCTM(double sx, double sy) {
    GraphicsState& s = rasterizer_->state();
    s.ctm = s.ctm.scale(sx, sy);
}

void CGBitmapContext::concatCTM(const CGAffineTransform& transform) {
    GraphicsState& s = rasterizer_->state();
    s.ctm = transform.concat(s.ctm);
}

void CGBitmapContext::clipToRect(const CGRect& rect) {
    const CGAffineTransform& ctm = rasterizer_->state().ctm;
    rasterizer_->clip({rectOutline(rect), ctm, ctm, Coverage::Fill, {}, true});
}

void CGBitmapContext::clip() {
    rasterizer_->clip(rasterizer_->coverageOf(rasterizer_->path().take(), Coverage::Fill));
}

void CGBitmapContext::setRGBFillColor(double r, double g, double b, double a) {
    rasterizer_->state().fill = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setRGBStrokeColor(double r, double g, double b, double a) {
    rasterizer_->state().stroke = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setLineWidth(double width) {
    rasterizer_->state().lineWidth = width;
}

void CGBitmapContext::setLineDash(double phase, std::span<const double> lengths) {
    GraphicsState& s = rasterizer_->state();
    s.dashPhase = phase;
    s.dash.assign(lengths.begin(), lengths.end());
}

void CGBitmapContext::moveToPoint(double x, double y) {
    rasterizer_->path().moveTo({x, y}, rasterizer_->state().ctm);
}

void CGBitmapContext::addLineToPoint(double x, double y) {
    rasterizer_->path().lineTo({x, y}, rasterizer_->state().ctm);
}

void CGBitmapContext::addRect(const CGRect& rect) {
    rasterizer_->path().add(rectOutline(rect), rasterizer_->state().ctm);
}

void CGBitmapContext::addPath(const CGPath& path) {
    rasterizer_->path().add(path.outline(), rasterizer_->state().ctm);
}

void CGBitmapContext::drawPath(CGPathDrawingMode mode) {
    const CurrentPath::Shape shape = rasterizer_->path().take();
    const GraphicsState& s = rasterizer_->state();
    if (mode != CGPathDrawingMode::Stroke) {
        const bool isEvenOdd =
            mode == CGPathDrawingMode::EOFill || mode == CGPathDrawingMode::EOFillStroke;
        rasterizer_->paint(
            rasterizer_->coverageOf(shape, isEvenOdd ? Coverage::EOFill : Coverage::Fill), s.fill);
    }
    if (mode != CGPathDrawingMode::Fill && mode != CGPathDrawingMode::EOFill) {
        rasterizer_->paint(rasterizer_->coverageOf(shape, Coverage::Stroke), s.stroke);
    }
}

void CGBitmapContext::strokePath() {
    drawPath(CGPathDrawingMode::Stroke);
}

void CGBitmapContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                         unsigned options) {
    rasterizer_->drawGradient(gradient, start, end, options);
}

void CGBitmapContext::drawImage(const CGRect& rect, const CGImage& image) {
    rasterizer_->drawImage(rect, image);
}

void CGBitmapContext::setTextMatrix(const CGAffineTransform& matrix) {
    rasterizer_->textMatrix = matrix;
}

void CGBitmapContext::drawLine(const CGDrawable& line) {
    rasterizer_->draw(line);
}

void CGBitmapContext::drawFrame(const CGDrawable& frame) {
    rasterizer_->draw(frame);
}

}  // namespace orvane::platform
