#include "orvane/display/graphics/StrokeStyleable.h"

#include <cmath>

#include "orvane/commons/reportMisuse.h"
#include "orvane/display/geometry/isZero.h"

namespace orvane::display::graphics {

namespace {

void refuseGradient() {
    commons::reportMisuse("StrokeStyleable::setStrokeGradient",
                          "the object keeps its stroke: it can have no gradient");
}

}  // namespace

void StrokeStyleable::setStrokeGradient(const LinearGradient&) {
    refuseGradient();
}

void StrokeStyleable::setStrokeGradient(const RadialGradient&) {
    refuseGradient();
}

void StrokeStyleable::setStrokeGradient(const ConicGradient&) {
    refuseGradient();
}

void StrokeStyleable::setStrokeWidth(float width) {
    strokeWidth_ = width;
    onStrokeWidthChanged();
}

void StrokeStyleable::setStrokeDashOffset(float offset) {
    strokeDashOffset_ = offset;
    onStrokeChanged();
}

void StrokeStyleable::setStrokeDashArray(const std::vector<float>& lengths) {
    strokeDashArray_.assign(lengths.begin(), lengths.end());
    onStrokeChanged();
}

geometry::Rect<double> StrokeStyleable::calculateBoundsWithStroke(
    const geometry::Rect<double>& rect) const {
    // A stroke of width 1 reserves a whole unit on each side, unlike other widths: on integer
    // coordinates it covers half a unit on either side, and the frames of applications depend on
    // this rule.
    const bool isOne = geometry::isZero(strokeWidth_ - 1.0F);
    const float pad = isOne ? strokeWidth_ : std::ceil(0.5F * strokeWidth_);
    const float both = 2 * pad;
    return geometry::Rect<double>(rect.x - double{pad}, rect.y - double{pad},
                                  rect.width + double{both}, rect.height + double{both})
        .normalized();
}

}  // namespace orvane::display::graphics
