#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Rect.h"

namespace orvane::display::graphics {

class ConicGradient;
class LinearGradient;
class RadialGradient;

// The stroke of an object's outline, centered on the outline. A new stroke is black and has a width
// of 0, which paints nothing. Each setter repaints the object. Values are not checked: a width or a
// dash pattern without a meaning paints nothing or its nearest sensible form.
class ORVANE_EXPORT StrokeStyleable {
public:
    virtual ~StrokeStyleable() = default;

    // Strokes with a color. A component c from 0 to 255 is painted as (c + 1) / 256, so an alpha of
    // 0 is still visible. An alpha of -1 removes the stroke.
    virtual void setStrokeColor(int r, int g, int b, int a) = 0;
    // Strokes with a 32-bit color: alpha in bits 24 to 31, then red, green and blue.
    virtual void setStrokeColor(unsigned argb) = 0;
    // Ignored by shapes, which keep the color they had; texts throw a character string ("... not
    // implemented"). Use setStrokeGradient.
    virtual void setStrokeColor(const LinearGradient& gradient) = 0;

    // Sets the width, in object coordinates. Ignored by texts.
    virtual void setStrokeWidth(float width);
    // Sets the distance into the dash pattern at which the stroke begins, in object coordinates.
    virtual void setStrokeDashOffset(float offset);
    // Sets the lengths of dashes and gaps in turn, in object coordinates; an empty array means a
    // solid line.
    virtual void setStrokeDashArray(const std::vector<float>& lengths);

    // Called when the color or the dash pattern has changed; repaints the object.
    virtual void onStrokeChanged() = 0;
    // Called when the width has changed; repaints the object.
    virtual void onStrokeWidthChanged() = 0;
    // Whether the color was not removed. The width does not matter.
    virtual bool isStrokeVisible() const = 0;

    // Stroke with a gradient, which is copied, until a color is set. What is in fractions refers to
    // the object's bounds, which include the stroke. Texts ignore it with a line on standard error:
    virtual void setStrokeGradient(const LinearGradient& gradient);
    virtual void setStrokeGradient(const RadialGradient& gradient);
    virtual void setStrokeGradient(const ConicGradient& gradient);

    // The width, in object coordinates.
    float getStrokeWidth() const { return strokeWidth_; }
    // The distance into the dash pattern at which the stroke begins.
    float getStrokeDashOffset() const { return strokeDashOffset_; }
    // The lengths of dashes and gaps; empty for a solid line.
    const std::vector<double>& getStrokeDashArray() const { return strokeDashArray_; }

    // Returns `rect` widened on each side by what the stroke needs, whether or not it is visible,
    // and normalized. Strokes enter bounds only here.
    geometry::Rect<double> calculateBoundsWithStroke(const geometry::Rect<double>& rect) const;

private:
    float strokeWidth_ = 0;
    float strokeDashOffset_ = 0;
    std::vector<double> strokeDashArray_;
};

}  // namespace orvane::display::graphics
