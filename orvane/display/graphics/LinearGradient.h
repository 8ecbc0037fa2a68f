#pragma once

#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/GradientUnit.h"

namespace orvane::display::graphics {

// Colours that run along an axis: a value that an application fills in and hands to setFillColor,
// which copies it. Painting extends the first and the last colour beyond the axis.
class ORVANE_EXPORT LinearGradient {
public:
    LinearGradient() = default;
    virtual ~LinearGradient() = default;
    LinearGradient(const LinearGradient&) = default;
    LinearGradient& operator=(const LinearGradient&) = default;
    LinearGradient(LinearGradient&&) = default;
    LinearGradient& operator=(LinearGradient&&) = default;

    // The end points of the axis: in the object's coordinates when hasBounds answers true,
    // otherwise fractions of the object's bounds.
    void set(GradientUnit x1, GradientUnit y1, GradientUnit x2, GradientUnit y2);
    void setX1(GradientUnit unit) { x1_ = unit; }
    void setY1(GradientUnit unit) { y1_ = unit; }
    void setX2(GradientUnit unit) { x2_ = unit; }
    void setY2(GradientUnit unit) { y2_ = unit; }
    GradientUnit getX1() const { return x1_; }
    GradientUnit getY1() const { return y1_; }
    GradientUnit getX2() const { return x2_; }
    GradientUnit getY2() const { return y2_; }

    // Colours are ARGB, alpha in bits 24 to 31; positions run from 0 to 1 along the axis. Give a
    // position with every colour, or with none.
    void addColor(unsigned argb) { colors_.push_back(argb); }
    void addColor(unsigned argb, float position);
    const std::vector<unsigned>& getColors() const { return colors_; }
    const std::vector<float>& getPositions() const { return positions_; }

    void setUserSpace(bool userSpace) { userSpace_ = userSpace; }
    bool isUserSpace() const { return userSpace_; }

    // Whether the axis is 0, 0 to 1, 0: horizontally across the whole object.
    bool isDefaultBounds() const;
    // Whether the axis stands in the object's coordinates. The default axis never does, not even in
    // user space: applications rely on it meaning the whole object.
    bool hasBounds() const { return userSpace_ && !isDefaultBounds(); }

private:
    GradientUnit x1_;
    GradientUnit y1_;
    GradientUnit x2_;
    GradientUnit y2_;
    std::vector<unsigned> colors_;
    std::vector<float> positions_;
    bool userSpace_ = true;
};

}  // namespace orvane::display::graphics
