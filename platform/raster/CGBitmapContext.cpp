#include "platform/raster/CGBitmapContext.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/raster/CanvasState.h"
#include "platform/raster/GradientSource.h"
#include "platform/raster/RoundGradientSource.h"

namespace orvane::platform {

CGBitmapContext::CGBitmapContext(int width, int height, const CGAffineTransform& base) {
    if (!isSensibleImageSize(width, height)) {
        width = 0;
        height = 0;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    const Bitmap bitmap{pixels.data(), width, height, width};
    canvas_ = std::make_unique<CanvasState>(bitmap, std::move(pixels), base);
}

CGBitmapContext::CGBitmapContext(std::uint32_t* pixels, int width, int height,
                                 std::size_t bytesPerRow, const CGAffineTransform& base) {
    const bool fits = pixels != nullptr && isSensibleImageSize(width, height) &&
                      bytesPerRow % 4 == 0 && bytesPerRow / 4 >= static_cast<std::size_t>(width);
    const Bitmap bitmap =
        fits ? Bitmap{pixels, width, height, static_cast<std::ptrdiff_t>(bytesPerRow / 4)}
             : Bitmap{};
    canvas_ = std::make_unique<CanvasState>(bitmap, std::vector<std::uint32_t>{}, base);
}

CGBitmapContext::~CGBitmapContext() = default;

int CGBitmapContext::width() const {
    return canvas_->bitmap().width;
}

int CGBitmapContext::height() const {
    return canvas_->bitmap().height;
}

std::size_t CGBitmapContext::bytesPerRow() const {
    return static_cast<std::size_t>(canvas_->bitmap().stride) * 4;
}

std::uint32_t* CGBitmapContext::pixels() {
    return canvas_->bitmap().pixels;
}

const std::uint32_t* CGBitmapContext::pixels() const {
    return canvas_->bitmap().pixels;
}

void CGBitmapContext::clearRect(const CGRect& rect) {
    const PixelRect area =
        canvas_->state().clipBounds.intersected(canvas_->coverageOf(rect).bounds());
    if (area.isEmpty()) {
        return;
    }
    for (int y = area.top; y < area.bottom; ++y) {
        std::fill_n(canvas_->bitmap().at(area.left, y), area.width(), 0u);
    }
}

std::shared_ptr<const CGImage> CGBitmapContext::createImage() const {
    const Bitmap& bitmap = canvas_->bitmap();
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
    canvas_->save();
}

void CGBitmapContext::restoreGState() {
    canvas_->restore();
}

void CGBitmapContext::translateCTM(double tx, double ty) {
    GraphicsState& s = canvas_->state();
    s.ctm = s.ctm.translate(tx, ty);
}

void CGBitmapContext::scaleCTM(double sx, double sy) {
    GraphicsState& s = canvas_->state();
    s.ctm = s.ctm.scale(sx, sy);
}

void CGBitmapContext::concatCTM(const CGAffineTransform& transform) {
    GraphicsState& s = canvas_->state();
    s.ctm = transform.concat(s.ctm);
}

CGSize CGBitmapContext::unitsInDevicePixels() const {
    const CGAffineTransform& t = canvas_->state().ctm;
    return {std::hypot(t.a, t.b), std::hypot(t.c, t.d)};
}

void CGBitmapContext::clipToRect(const CGRect& rect) {
    canvas_->clip(canvas_->coverageOf(rect));
}

void CGBitmapContext::clip() {
    canvas_->clipToPath();
}

void CGBitmapContext::setRGBFillColor(double r, double g, double b, double a) {
    canvas_->state().fill = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setRGBStrokeColor(double r, double g, double b, double a) {
    canvas_->state().stroke = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setLineWidth(double width) {
    canvas_->state().lineWidth = width;
}

void CGBitmapContext::setLineDash(double phase, std::span<const double> lengths) {
    GraphicsState& s = canvas_->state();
    s.dashPhase = phase;
    s.dash.assign(lengths.begin(), lengths.end());
}

void CGBitmapContext::moveToPoint(double x, double y) {
    canvas_->path().moveTo({x, y}, canvas_->state().ctm);
}

void CGBitmapContext::addLineToPoint(double x, double y) {
    canvas_->path().lineTo({x, y}, canvas_->state().ctm);
}

void CGBitmapContext::addRect(const CGRect& rect) {
    CGPath path;
    path.addRect(rect);
    addPath(path);
}

void CGBitmapContext::addPath(const CGPath& path) {
    canvas_->path().add(path.outline(), canvas_->state().ctm);
}

void CGBitmapContext::drawPath(CGPathDrawingMode mode) {
    const CurrentPath::Shape shape = canvas_->takePath();
    const GraphicsState& s = canvas_->state();
    if (mode != CGPathDrawingMode::Stroke) {
        const bool isEvenOdd =
            mode == CGPathDrawingMode::EOFill || mode == CGPathDrawingMode::EOFillStroke;
        canvas_->paint(canvas_->coverageOf(shape, isEvenOdd ? Coverage::EOFill : Coverage::Fill),
                       s.fill);
    }
    if (mode != CGPathDrawingMode::Fill && mode != CGPathDrawingMode::EOFill) {
        canvas_->paint(canvas_->coverageOf(shape, Coverage::Stroke), s.stroke);
    }
}

void CGBitmapContext::strokePath() {
    drawPath(CGPathDrawingMode::Stroke);
}

void CGBitmapContext::replacePathWithStrokedPath() {
    canvas_->strokePathForClip();
}

void CGBitmapContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                         unsigned options) {
    if (canvas_->showsGradient(gradient)) {
        canvas_->paint(GradientSource(gradient, canvas_->state().ctm, start, end, options));
    }
}

void CGBitmapContext::drawRadialGradient(const CGGradient& gradient, CGPoint startCenter,
                                         double startRadius, CGPoint endCenter, double endRadius,
                                         unsigned options) {
    if (canvas_->showsGradient(gradient)) {
        canvas_->paint(RadialGradientSource(gradient, canvas_->state().ctm, startCenter,
                                            startRadius, endCenter, endRadius, options));
    }
}

void CGBitmapContext::drawConicGradient(const CGGradient& gradient, CGPoint center, double angle) {
    if (canvas_->showsGradient(gradient)) {
        canvas_->paint(ConicGradientSource(gradient, canvas_->state().ctm, center, angle));
    }
}

void CGBitmapContext::beginGroup(const CGRect& area, const CGGroupStyle& style) {
    canvas_->beginGroup(area, style);
}

std::shared_ptr<const CGGroup> CGBitmapContext::endGroup() {
    return canvas_->endGroup();
}

bool CGBitmapContext::drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                                double opacity) {
    return canvas_->drawGroup(group, transform, opacity);
}

void CGBitmapContext::drawImage(const CGRect& rect, const CGImage& image) {
    canvas_->drawImage(rect, image);
}

void CGBitmapContext::setTextMatrix(const CGAffineTransform& matrix) {
    canvas_->textMatrix = matrix;
}

void CGBitmapContext::drawLine(const CGDrawable& line) {
    canvas_->draw(line);
}

void CGBitmapContext::drawFrame(const CGDrawable& frame) {
    canvas_->draw(frame);
}

}  // namespace orvane::platform
