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

// Whether a bitmap under this transformation keeps its size and stands upright.
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

// The canvas behind the interface: the state stack, the clip, the current path.
class CGBitmapContext::Rasteriser {
public:
    Rasteriser(const Bitmap& bitmap, std::vector<std::uint32_t> owned,
               const CGAffineTransform& base)
        : owned_(std::move(owned)), painter_(bitmap), drawablePainter_(painter_), states_(1) {
        state().ctm = base;
        state().clipBounds = bitmap.bounds();
    }

    const Bitmap& bitmap() const { return painter_.bitmap(); }
    GraphicsState& state() { return states_[depth_]; }
    CurrentPath& path() { return path_; }

    void save() {
        // States left by restore keep their storage for the next save.
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

    // Not part of the graphics state.
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

void CGBitmapContext::Rasteriser::drawGradient(const CGGradient& gradient, CGPoint start,
                                               CGPoint end, unsigned options) {
    if (gradient.stops().empty() || !state().ctm.isDrawable()) {
        return;
    }
    painter_.paint(GradientSource(gradient, state().ctm, start, end, options), currentClip());
}

void CGBitmapContext::Rasteriser::drawImage(const CGRect& rect, const CGImage& image) {
    const GraphicsState& s = state();
    // The bitmap's rows run from the rectangle's far y edge back to its origin.
    const CGAffineTransform toRect{
        rect.size.width / image.width(), 0, 0, -rect.size.height / image.height(), rect.origin.x,
        rect.origin.y + rect.size.height};
    const CGAffineTransform toPixels = toRect.concat(s.ctm);
    if (!s.ctm.isDrawable() || !toPixels.isDrawable()) {
        return;
    }
    const Clip clip = currentClip();
    if (keepsSize(toPixels)) {
        // Copied pixel by pixel, at the whole pixels nearest to its place.
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
    rasteriser_ = std::make_unique<Rasteriser>(bitmap, std::move(pixels), base);
}

CGBitmapContext::CGBitmapContext(std::uint32_t* pixels, int width, int height,
                                 std::size_t bytesPerRow, const CGAffineTransform& base) {
    const bool fits = pixels != nullptr && isSensibleImageSize(width, height) &&
                      bytesPerRow % 4 == 0 && bytesPerRow / 4 >= static_cast<std::size_t>(width);
    const Bitmap bitmap =
        fits ? Bitmap{pixels, width, height, static_cast<std::ptrdiff_t>(bytesPerRow / 4)}
             : Bitmap{};
    rasteriser_ = std::make_unique<Rasteriser>(bitmap, std::vector<std::uint32_t>{}, base);
}

CGBitmapContext::~CGBitmapContext() = default;

int CGBitmapContext::width() const {
    return rasteriser_->bitmap().width;
}

int CGBitmapContext::height() const {
    return rasteriser_->bitmap().height;
}

std::size_t CGBitmapContext::bytesPerRow() const {
    return static_cast<std::size_t>(rasteriser_->bitmap().stride) * 4;
}

std::uint32_t* CGBitmapContext::pixels() {
    return rasteriser_->bitmap().pixels;
}

const std::uint32_t* CGBitmapContext::pixels() const {
    return rasteriser_->bitmap().pixels;
}

void CGBitmapContext::clearRect(const CGRect& rect) {
    const GraphicsState& s = rasteriser_->state();
    const ShapeCoverage shape(rectOutline(rect), s.ctm, s.ctm, Coverage::Fill, {}, true);
    const PixelRect area = s.clipBounds.intersected(shape.bounds());
    if (area.isEmpty()) {
        return;
    }
    for (int y = area.top; y < area.bottom; ++y) {
        std::fill_n(rasteriser_->bitmap().at(area.left, y), area.width(), 0u);
    }
}

std::shared_ptr<const CGImage> CGBitmapContext::createImage() const {
    const Bitmap& bitmap = rasteriser_->bitmap();
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
    rasteriser_->save();
}

void CGBitmapContext::restoreGState() {
    rasteriser_->restore();
}

void CGBitmapContext::translateCTM(double tx, double ty) {
    GraphicsState& s = rasteriser_->state();
    s.ctm = s.ctm.translate(tx, ty);
}

void CGBitmapContext::scaleCTM(double sx, double sy) {
    GraphicsState& s = rasteriser_->state();
    s.ctm = s.ctm.scale(sx, sy);
}

void CGBitmapContext::concatCTM(const CGAffineTransform& transform) {
    GraphicsState& s = rasteriser_->state();
    s.ctm = transform.concat(s.ctm);
}

void CGBitmapContext::clipToRect(const CGRect& rect) {
    const CGAffineTransform& ctm = rasteriser_->state().ctm;
    rasteriser_->clip({rectOutline(rect), ctm, ctm, Coverage::Fill, {}, true});
}

void CGBitmapContext::clip() {
    rasteriser_->clip(rasteriser_->coverageOf(rasteriser_->path().take(), Coverage::Fill));
}

void CGBitmapContext::setRGBFillColor(double r, double g, double b, double a) {
    rasteriser_->state().fill = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setRGBStrokeColor(double r, double g, double b, double a) {
    rasteriser_->state().stroke = {{r, g, b, a}, premultiplied({r, g, b, a})};
}

void CGBitmapContext::setLineWidth(double width) {
    rasteriser_->state().lineWidth = width;
}

void CGBitmapContext::setLineDash(double phase, std::span<const double> lengths) {
    GraphicsState& s = rasteriser_->state();
    s.dashPhase = phase;
    s.dash.assign(lengths.begin(), lengths.end());
}

void CGBitmapContext::moveToPoint(double x, double y) {
    rasteriser_->path().moveTo({x, y}, rasteriser_->state().ctm);
}

void CGBitmapContext::addLineToPoint(double x, double y) {
    rasteriser_->path().lineTo({x, y}, rasteriser_->state().ctm);
}

void CGBitmapContext::addRect(const CGRect& rect) {
    rasteriser_->path().add(rectOutline(rect), rasteriser_->state().ctm);
}

void CGBitmapContext::addPath(const CGPath& path) {
    rasteriser_->path().add(path.outline(), rasteriser_->state().ctm);
}

void CGBitmapContext::drawPath(CGPathDrawingMode mode) {
    const CurrentPath::Shape shape = rasteriser_->path().take();
    const GraphicsState& s = rasteriser_->state();
    if (mode != CGPathDrawingMode::Stroke) {
        const bool isEvenOdd =
            mode == CGPathDrawingMode::EOFill || mode == CGPathDrawingMode::EOFillStroke;
        rasteriser_->paint(
            rasteriser_->coverageOf(shape, isEvenOdd ? Coverage::EOFill : Coverage::Fill), s.fill);
    }
    if (mode != CGPathDrawingMode::Fill && mode != CGPathDrawingMode::EOFill) {
        rasteriser_->paint(rasteriser_->coverageOf(shape, Coverage::Stroke), s.stroke);
    }
}

void CGBitmapContext::strokePath() {
    drawPath(CGPathDrawingMode::Stroke);
}

void CGBitmapContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                         unsigned options) {
    rasteriser_->drawGradient(gradient, start, end, options);
}

void CGBitmapContext::drawImage(const CGRect& rect, const CGImage& image) {
    rasteriser_->drawImage(rect, image);
}

void CGBitmapContext::setTextMatrix(const CGAffineTransform& matrix) {
    rasteriser_->textMatrix = matrix;
}

void CGBitmapContext::drawLine(const CGDrawable& line) {
    rasteriser_->draw(line);
}

void CGBitmapContext::drawFrame(const CGDrawable& frame) {
    rasteriser_->draw(frame);
}

}  // namespace orvane::platform
