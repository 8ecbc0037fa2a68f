#pragma once

#include "orvane/commons/Export.h"

namespace orvane::display::graphics {

class LinearGradient;
class Pattern;

// What can be filled. Each setter repaints the object; the last one wins.
class ORVANE_EXPORT FillStyleable {
public:
    virtual ~FillStyleable() = default;

    // Components run from 0 to 255 and stand for 1/256 to 1: an alpha of 0 still counts as visible.
    // An alpha of -1 is none at all and takes the fill away.
    virtual void setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) = 0;
    virtual void setFillColor(unsigned argb) = 0;
    virtual void setFillColor(const LinearGradient& gradient) = 0;
    virtual void setPattern(const Pattern& pattern) = 0;

    virtual void onFillChanged() = 0;
    virtual bool isFillVisible() const = 0;
};

}  // namespace orvane::display::graphics
