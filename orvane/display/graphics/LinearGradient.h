#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/GradientAxis.h"

namespace orvane::display::graphics {

// Colors along an axis. An application fills in this value and passes it to setFillColor, which
// copies it. The first and the last color continue beyond the ends of the axis.
//
// The axis is in object coordinates when hasBounds() returns true, otherwise in fractions of the
// object's bounds.
class ORVANE_EXPORT LinearGradient : public GradientAxis {
public:
    LinearGradient() = default;
    virtual ~LinearGradient() = default;
    LinearGradient(const LinearGradient&) = default;
    LinearGradient& operator=(const LinearGradient&) = default;
    LinearGradient(LinearGradient&&) = default;
    LinearGradient& operator=(LinearGradient&&) = default;

    // Appends an ARGB color (alpha in bits 24 to 31) without a position. The colors of a gradient
    // either all have a position or none of them has one.
    void addColor(unsigned argb) { colors_.push_back(argb); }
    // Appends an ARGB color at a position from 0 to 1 along the axis.
    void addColor(unsigned argb, float position);
    // The colors in the order in which they were added.
    const std::vector<unsigned>& getColors() const { return colors_; }
    // The positions that were given, in the same order.
    const std::vector<float>& getPositions() const { return positions_; }

    // Sets whether the axis is in object coordinates (the default) or in fractions of the object's
    // bounds.
    void setUserSpace(bool userSpace) { userSpace_ = userSpace; }
    // The value that setUserSpace set.
    bool isUserSpace() const { return userSpace_; }

    // Whether the axis runs from 0, 0 to 1, 0: horizontally across the whole object.
    bool isDefaultBounds() const;
    // Whether the axis is in object coordinates. The default axis never is, not even in user space:
    // applications rely on it to mean the whole object.
    bool hasBounds() const { return userSpace_ && !isDefaultBounds(); }

private:
    std::vector<unsigned> colors_;
    std::vector<float> positions_;
    bool userSpace_ = true;
};

}  // namespace orvane::display::graphics
