#include "orvane/display/graphics/StrokeStyleable.h"

#include <cmath>
#include <limits>

namespace orvane::display::graphics {

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
    // A line of width 1 reserves a whole unit on each side by a rule of its own: on whole
    // coordinates it covers half a unit of either neighbour, and the frames of applications are
    // built on it.
    const bool isOne = std::abs(strokeWidth_ - 1.0F) < std::numeric_limits<float>::min();
    const float pad = isOne ? strokeWidth_ : std::ceil(0.5F * strokeWidth_);
    const float both = 2 * pad;
    return geometry::Rect<double>(rect.x - double{pad}, rect.y - double{pad},
                                  rect.width + double{both}, rect.height + double{both})
        .normalized();
}

}  // namespace orvane::display::graphics
