#pragma once

#include "orvane/commons/Export.h"

namespace orvane::display::graphics {

class ConicGradient;
class LinearGradient;
class Pattern;
class RadialGradient;

// The fill of an object: a color or a gradient. A new fill is black. Each setter repaints the
// object; the last one determines the fill. Texts throw a character string ("... not implemented")
// for gradients and patterns.
class ORVANE_EXPORT FillStyleable {
public:
    virtual ~FillStyleable() = default;

    // Fills with a color. A component c from 0 to 255 is painted as (c + 1) / 256, so an alpha of 0
    // is still visible. An alpha of -1 removes the fill.
    virtual void setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) = 0;
    // Fills with a 32-bit color: alpha in bits 24 to 31, then red, green and blue.
    virtual void setFillColor(unsigned argb) = 0;
    // Fills with a gradient, which is copied.
    virtual void setFillColor(const LinearGradient& gradient) = 0;
    // Accepted and ignored by shapes: no fill paints a pattern yet.
    virtual void setPattern(const Pattern& pattern) = 0;

    // Called when the fill has changed; repaints the object.
    virtual void onFillChanged() = 0;
    // Whether there is a gradient or a color that was not removed.
    virtual bool isFillVisible() const = 0;

    // Fill with a gradient around a point, which is copied. Texts ignore it with a line on standard
    // error:
    virtual void setFillGradient(const RadialGradient& gradient);
    virtual void setFillGradient(const ConicGradient& gradient);
};

}  // namespace orvane::display::graphics
