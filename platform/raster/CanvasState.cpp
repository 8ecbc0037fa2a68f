#include "platform/raster/CanvasState.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/raster/BitmapSource.h"
#include "platform/raster/Blend.h"
#include "platform/raster/ImageSource.h"
#include "platform/raster/PixelSource.h"
#include "platform/raster/places.h"

namespace orvane::platform {

namespace {

// Whether an image under this transformation is neither scaled, turned nor flipped.
bool keepsSize(const CGAffineTransform& t) {
    constexpr double kTolerance = 1e-6;
    return std::abs(t.a - 1) < kTolerance && std::abs(t.d - 1) < kTolerance &&
           std::abs(t.b) < kTolerance && std::abs(t.c) < kTolerance;
}

}  // namespace

// A group that has begun, and the state of the canvas around it.
struct CanvasState::Group {
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
          target(
              {pixels.data(), place.source.width(), place.source.height(), place.source.width()}) {}

    GroupLayout layout;
    CGGroupStyle style;
    CGAffineTransform ctm;
    std::size_t depth;
    std::vector<ShapeCoverage> clipShapes;
    std::vector<std::vector<double>> clipDashes;
    std::vector<std::uint32_t> pixels;
    Target target;
};

CanvasState::CanvasState(const Bitmap& bitmap, std::vector<std::uint32_t> owned,
                         const CGAffineTransform& base)
    : owned_(std::move(owned)), canvas_(bitmap), states_(1) {
    state().ctm = base;
    state().clipBounds = bitmap.bounds();
}

CanvasState::~CanvasState() = default;

CanvasState::Target& CanvasState::target() {
    return groups_.empty() ? canvas_ : groups_.back()->target;
}

void CanvasState::save() {
    // Popped states keep their memory for the next save.
    if (++depth_ == states_.size()) {
        states_.push_back(states_.back());
    } else {
        states_[depth_] = states_[depth_ - 1];
    }
}

void CanvasState::restore() {
    if (depth_ > 0) {
        --depth_;
        clipShapes_.erase(clipShapes_.begin() + static_cast<std::ptrdiff_t>(state().clipShapes),
                          clipShapes_.end());
        clipDashes_.resize(std::min(clipDashes_.size(), clipShapes_.size()));
    }
}

void CanvasState::clip(const ShapeCoverage& shape) {
    GraphicsState& s = state();
    s.clipBounds = s.clipBounds.intersected(shape.bounds());
    if (!shape.covers(s.clipBounds)) {
        clipShapes_.push_back(shape);
        s.clipShapes = clipShapes_.size();
    }
}

void CanvasState::clipToPath() {
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

CurrentPath::Shape CanvasState::takePath() {
    stroke_.reset();
    return path_.take();
}

ShapeCoverage CanvasState::coverageOf(const CurrentPath::Shape& shape, Coverage coverage) {
    const GraphicsState& s = state();
    return {shape.outline,  shape.toPixels, s.ctm, coverage, {s.lineWidth, s.dashPhase, s.dash},
            shape.isLasting};
}

ShapeCoverage CanvasState::coverageOf(const CGRect& rect) {
    CGPath path;
    path.addRect(rect);
    const CGAffineTransform& ctm = state().ctm;
    return {path.outline(), ctm, ctm, Coverage::Fill, {}, true};
}

void CanvasState::paint(const ShapeCoverage& shape, const GraphicsState::Paint& paint) {
    target().painter.paint(shape, paint.premultiplied, currentClip());
}

void CanvasState::paint(const PixelSource& source) {
    target().painter.paint(source, currentClip());
}

bool CanvasState::showsGradient(const CGGradient& gradient) {
    return !gradient.stops().empty() && state().ctm.isDrawable();
}

void CanvasState::drawImage(const CGRect& rect, const CGImage& image) {
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
    const ShapeCoverage shape = coverageOf(rect);
    if (clip.bounds.intersected(shape.bounds()).isEmpty()) {
        return;
    }
    const ImageSource source(image, toPixels);
    if (source.isValid()) {
        target().painter.paint(shape, source, clip);
    }
}

void CanvasState::draw(const CGDrawable& drawable) {
    const GraphicsState& s = state();
    target().drawables.paint(drawable, textMatrix.concat(s.ctm), s.fill.color, s.stroke.color,
                             currentClip());
}

void CanvasState::beginGroup(const CGRect& area, const CGGroupStyle& style) {
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

std::shared_ptr<const CGGroup> CanvasState::endGroup() {
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

bool CanvasState::drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                            double opacity) {
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

}  // namespace orvane::platform
