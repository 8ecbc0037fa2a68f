#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Rect.h"

namespace orvane::display::graphics {

class LinearGradient;

// What has an outline to stroke. Each setter repaints the object. Values are not checked: a width
// or a dash that makes no sense paints nothing or its nearest sensible form.
class ORVANE_EXPORT StrokeStyleable {
public:
    virtual ~StrokeStyleable() = default;

    // Components run from 0 to 255 and stand for 1/256 to 1: an alpha of 0 still counts as visible.
    // An alpha of -1 is none at all and takes the stroke away.
    virtual void setStrokeColor(int r, int g, int b, int a) = 0;
    virtual void setStrokeColor(unsigned argb) = 0;
    virtual void setStrokeColor(const LinearGradient& gradient) = 0;

    // In user units, the line centred on the outline.
    virtual void setStrokeWidth(float width);
    // How far into the dash pattern the line begins.
    virtual void setStrokeDashOffset(float offset);
    // Lengths of dash and gap in turn; empty for a solid line.
    virtual void setStrokeDashArray(const std::vector<float>& lengths);

    virtual void onStrokeChanged() = 0;
    virtual void onStrokeWidthChanged() = 0;
    virtual bool isStrokeVisible() const = 0;

    float getStrokeWidth() const { return strokeWidth_; }
    float getStrokeDashOffset() const { return strokeDashOffset_; }
    const std::vector<double>& getStrokeDashArray() const { return strokeDashArray_; }

    // `rect` widened by what the line needs on each side, whether or not the line can be seen; with
    // non-negative extents. The one place where a stroke enters bounds.
    geometry::Rect<double> calculateBoundsWithStroke(const geometry::Rect<double>& rect) const;

private:
    float strokeWidth_ = 0;
    float strokeDashOffset_ = 0;
    std::vector<double> strokeDashArray_;
};

}  // namespace orvane::display::graphics
