#include "orvane/display/graphics/quartz/QuartzDrawable.h"

#include <utility>

#include "orvane/display/graphics/quartz/Color.h"
#include "orvane/display/native/CurrentCanvas.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/Effects.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGroup.h"

namespace orvane::display::graphics::quartz {

namespace {

// Larger pictures are not kept. In points.
constexpr double kLargestKeptArea = 1 << 20;

// Begins a group and ends it, also if painting throws.
class GroupScope {
public:
    GroupScope(platform::CGContext& canvas, const platform::CGRect& area,
               const platform::CGGroupStyle& style)
        : canvas_(canvas) {
        canvas_.beginGroup(area, style);
    }
    ~GroupScope() {
        if (!isEnded_) {
            canvas_.endGroup();
        }
    }
    GroupScope(const GroupScope&) = delete;
    GroupScope& operator=(const GroupScope&) = delete;

    std::shared_ptr<const platform::CGGroup> end() {
        isEnded_ = true;
        return canvas_.endGroup();
    }

private:
    platform::CGContext& canvas_;
    bool isEnded_ = false;
};

// Without a canvas, painting only records frames.
class NoCanvasScope {
public:
    NoCanvasScope() : canvas_(GetCurrentCanvas()) { SetCurrentCanvas(nullptr); }
    ~NoCanvasScope() { SetCurrentCanvas(canvas_); }
    NoCanvasScope(const NoCanvasScope&) = delete;
    NoCanvasScope& operator=(const NoCanvasScope&) = delete;

private:
    platform::CGContext* canvas_;
};

geometry::Rect<double> grown(const geometry::Rect<double>& rect, double margin) {
    return {rect.x - margin, rect.y - margin, rect.width + 2 * margin, rect.height + 2 * margin};
}

platform::CGGroupStyle styleOf(const Effects& effects, double opacity,
                               const geometry::Matrix& transformation) {
    const Color color = Color::fromArgb(effects.shadow.color);
    return {opacity,
            effects.blur,
            {{effects.shadow.x, effects.shadow.y},
             effects.shadow.radius,
             {color.r, color.g, color.b, effects.hasShadow() ? color.a : 0}},
            platform::CGAffineTransform(transformation)};
}

}  // namespace

void QuartzDrawable::paintWithEffects(const geometry::Rect<double>& rect) {
    platform::CGContext* const canvas = getCanvas();
    Effects& effects = *this->effects();
    // The view of a layer has the opacity of the object that owns it.
    const double opacity = ownsLayer() ? 1 : effects.opacity;
    const ContainerObject* const self = asContainer();
    const bool isSharp =
        !effects.reaches() || (self != nullptr && self->getScrollOffset() != nullptr);
    const std::shared_ptr<ContainerObject> parent = getParent();
    const auto fromScreen =
        platform::CGAffineTransform(parent ? parent->getFullTransformation() : geometry::Matrix())
            .invert();
    if (canvas == nullptr || !fromScreen || (isSharp && opacity == 1)) {
        return paint(rect);
    }
    if (opacity == 0) {
        return;
    }
    const double reach = getEffectReach();
    const EffectScope scope(reach);
    const auto style = styleOf(effects, opacity, getEffectTransformation());
    if (effects.picture) {
        const auto& kept = *static_cast<const platform::CGGroup*>(effects.picture.get());
        if (canvas->drawGroup(kept, style.transform, opacity)) {
            if (std::exchange(effects.isMoved, false)) {
                const NoCanvasScope noCanvas;
                paint(getInk());
            }
            effects.isPainted = true;
            return;
        }
    }
    const geometry::Rect<double> ink = getInk();
    const bool keeps = effects.isPainted && ink.width * ink.height <= kLargestKeptArea;
    const geometry::Rect<double> wanted = keeps ? ink : rect;
    GroupScope group(*canvas, fromScreen->apply(platform::CGRect(wanted)), style);
    paint(grown(wanted, reach));
    const std::shared_ptr<const platform::CGGroup> picture = group.end();
    effects.picture = keeps ? picture : nullptr;
    effects.isMoved = false;
    effects.isPainted = true;
}

void QuartzDrawable::storeState() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->saveGState();
    }
}

void QuartzDrawable::applyTransform() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->concatCTM(static_cast<platform::CGAffineTransform>(getTransformation()));
    }
}

void QuartzDrawable::restoreState() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->restoreGState();
    }
}

platform::CGContext* QuartzDrawable::getCanvas() {
    return GetCurrentCanvas();
}

}  // namespace orvane::display::graphics::quartz
