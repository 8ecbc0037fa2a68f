#include "platform/raster/CGBitmapContext.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
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
#include "platform/raster/GroupPicture.h"
#include "platform/raster/ImageSource.h"
#include "platform/raster/RoundGradientSource.h"
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
        : owned_(std::move(owned)), canvas_(bitmap), states_(1) {
        state().ctm = base;
        state().clipBounds = bitmap.bounds();
    }

    // Those of the innermost group, if there is one.
    const Bitmap& bitmap() { return target().painter.bitmap(); }
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
            clipDashes_.resize(std::min(clipDashes_.size(), clipShapes_.size()));
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

    // Clips to the current path or, after replacePathWithStrokedPath, to its stroke.
    void clipToPath() {
        const CurrentPath::Shape shape = path_.take();
        const std::optional<GraphicsState> stroke = std::exchange(stroke_, std::nullopt);
        if (!stroke) {
            return clip(coverageOf(shape, Coverage::Fill));
        }
        // A coverage refers to its dash, which must live as long as the clip.
        clipDashes_.resize(clipShapes_.size() + 1);
        std::vector<double>& dash = clipDashes_.back();
        dash = stroke->dash;
        clip({shape.outline,
              shape.toPixels,
              stroke->ctm,
              Coverage::Stroke,
              {stroke->lineWidth, stroke->dashPhase, dash},
              shape.isLasting});
    }
    CurrentPath::Shape takePath() {
        stroke_.reset();
        return path_.take();
    }
    void strokePathForClip() { stroke_ = state(); }

    void beginGroup(const CGRect& area, const CGGroupStyle& style) {
        const GraphicsState& s = state();
        const GroupLayout layout(area, style, s.ctm, s.clipBounds);
        groups_.push_back(std::make_unique<Group>(layout, style, s.ctm, depth_,
                                                  std::exchange(clipShapes_, {}),
                                                  std::exchange(clipDashes_, {})));
        save();
        GraphicsState& inside = state();
        inside.ctm = inside.ctm.concat(
            CGAffineTransform::makeTranslation(-layout.source.left, -layout.source.top));
        inside.clipBounds = bitmap().bounds();
        inside.clipShapes = 0;
    }

    std::shared_ptr<const CGGroup> endGroup() {
        if (groups_.empty()) {
            return nullptr;
        }
        const std::unique_ptr<Group> group = std::move(groups_.back());
        groups_.pop_back();
        depth_ = group->depth;
        clipShapes_ = std::move(group->clipShapes);
        clipDashes_ = std::move(group->clipDashes);
        const auto picture = std::make_shared<const GroupPicture>(
            std::move(group->pixels), group->layout, group->style.shadow.color,
            group->style.transform.concat(group->ctm));
        picture->draw(target().painter, 0, 0, group->style.opacity, currentClip());
        return group->layout.isComplete && !GroupPicture::areTooMany() ? picture : nullptr;
    }

    bool drawGroup(const CGGroup& group, const CGAffineTransform& transform, double opacity) {
        const auto* const picture = dynamic_cast<const GroupPicture*>(&group);
        if (picture == nullptr) {
            return false;
        }
        const CGAffineTransform now = transform.concat(state().ctm);
        const CGAffineTransform& then = picture->toPixels();
        const double dx = now.tx - then.tx;
        const double dy = now.ty - then.ty;
        constexpr double kTolerance = 1e-9;
        if (now.a != then.a || now.b != then.b || now.c != then.c || now.d != then.d ||
            !(std::abs(dx - std::round(dx)) < kTolerance && std::abs(dx) < 1e6) ||
            !(std::abs(dy - std::round(dy)) < kTolerance && std::abs(dy) < 1e6)) {
            return false;
        }
        picture->draw(target().painter, static_cast<int>(std::lround(dx)),
                      static_cast<int>(std::lround(dy)), opacity, currentClip());
        return true;
    }

    ShapeCoverage coverageOf(const CurrentPath::Shape& shape, Coverage coverage) {
        const GraphicsState& s = state();
        return {shape.outline,  shape.toPixels, s.ctm, coverage, {s.lineWidth, s.dashPhase, s.dash},
                shape.isLasting};
    }

    void paint(const ShapeCoverage& shape, const GraphicsState::Paint& paint) {
        target().painter.paint(shape, paint.premultiplied, currentClip());
    }

    // Whether the gradient would be visible.
    bool showsGradient(const CGGradient& gradient) {
        return !gradient.stops().empty() && state().ctm.isDrawable();
    }
    void paint(const PixelSource& source) { target().painter.paint(source, currentClip()); }
    void drawImage(const CGRect& rect, const CGImage& image);

    void draw(const CGDrawable& drawable) {
        const GraphicsState& s = state();
        target().drawables.paint(drawable, textMatrix.concat(s.ctm), s.fill.color, s.stroke.color,
                                 currentClip());
    }

    // The text matrix is not part of the graphics state.
    CGAffineTransform textMatrix;

private:
    // What is painted on.
    struct Target {
        explicit Target(const Bitmap& bitmap) : painter(bitmap), drawables(painter) {}
        BitmapPainter painter;
        DrawablePainter drawables;
    };
    // A group that has begun, and the state of the canvas around it.
    struct Group {
        Group(const GroupLayout& place, const CGGroupStyle& how, const CGAffineTransform& toPixels,
              std::size_t stateDepth, std::vector<ShapeCoverage> shapes,
              std::vector<std::vector<double>> dashes)
            : layout(place),
              style(how),
              ctm(toPixels),
              depth(stateDepth),
              clipShapes(std::move(shapes)),
              clipDashes(std::move(dashes)),
              pixels(static_cast<std::size_t>(place.source.width()) *
                     static_cast<std::size_t>(place.source.height())),
              target({pixels.data(), place.source.width(), place.source.height(),
                      place.source.width()}) {}

        GroupLayout layout;
        CGGroupStyle style;
        CGAffineTransform ctm;
        std::size_t depth;
        std::vector<ShapeCoverage> clipShapes;
        std::vector<std::vector<double>> clipDashes;
        std::vector<std::uint32_t> pixels;
        Target target;
    };

    Target& target() { return groups_.empty() ? canvas_ : groups_.back()->target; }
    Clip currentClip() { return {state().clipBounds, clipShapes_}; }

    std::vector<std::uint32_t> owned_;
    Target canvas_;
    std::vector<std::unique_ptr<Group>> groups_;
    std::vector<GraphicsState> states_;
    std::size_t depth_ = 0;
    std::vector<ShapeCoverage> clipShapes_;
    // The dash of each clip shape that is a stroke; shorter than clipShapes_ if the last ones are
    // not.
    std::vector<std::vector<double>> clipDashes_;
    CurrentPath path_;
    std::optional<GraphicsState> stroke_;
};

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
            target().painter.paint(BitmapSource(image.pixels().data(), image.width(), left, top),
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
        target().painter.paint(shape, source, clip);
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

CGSize CGBitmapContext::unitsInDevicePixels() const {
    const CGAffineTransform& t = rasterizer_->state().ctm;
    return {std::hypot(t.a, t.b), std::hypot(t.c, t.d)};
}

void CGBitmapContext::clipToRect(const CGRect& rect) {
    const CGAffineTransform& ctm = rasterizer_->state().ctm;
    rasterizer_->clip({rectOutline(rect), ctm, ctm, Coverage::Fill, {}, true});
}

void CGBitmapContext::clip() {
    rasterizer_->clipToPath();
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
    const CurrentPath::Shape shape = rasterizer_->takePath();
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

void CGBitmapContext::replacePathWithStrokedPath() {
    rasterizer_->strokePathForClip();
}

void CGBitmapContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                         unsigned options) {
    if (rasterizer_->showsGradient(gradient)) {
        rasterizer_->paint(GradientSource(gradient, rasterizer_->state().ctm, start, end, options));
    }
}

void CGBitmapContext::drawRadialGradient(const CGGradient& gradient, CGPoint startCenter,
                                         double startRadius, CGPoint endCenter, double endRadius,
                                         unsigned options) {
    if (rasterizer_->showsGradient(gradient)) {
        rasterizer_->paint(RadialGradientSource(gradient, rasterizer_->state().ctm, startCenter,
                                                startRadius, endCenter, endRadius, options));
    }
}

void CGBitmapContext::drawConicGradient(const CGGradient& gradient, CGPoint center, double angle) {
    if (rasterizer_->showsGradient(gradient)) {
        rasterizer_->paint(ConicGradientSource(gradient, rasterizer_->state().ctm, center, angle));
    }
}

void CGBitmapContext::beginGroup(const CGRect& area, const CGGroupStyle& style) {
    rasterizer_->beginGroup(area, style);
}

std::shared_ptr<const CGGroup> CGBitmapContext::endGroup() {
    return rasterizer_->endGroup();
}

bool CGBitmapContext::drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                                double opacity) {
    return rasterizer_->drawGroup(group, transform, opacity);
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
