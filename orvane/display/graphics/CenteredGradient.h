#pragma once

#include <vector>

namespace orvane::display::graphics {

// The colors and the center of a gradient around a point. An application fills in a
// RadialGradient or a ConicGradient and passes it to setFillGradient or setStrokeGradient, which
// copies it.
//
// Lengths are in fractions of the object's bounds, so that 0.5, 0.5 is the middle, or, in user
// space, in object coordinates.
class CenteredGradient {
public:
    // Appends an ARGB color (alpha in bits 24 to 31) without a position. The colors of a gradient
    // either all have a position or none of them has one.
    void addColor(unsigned argb) { colors_.push_back(argb); }
    // Appends an ARGB color at a position from 0 to 1.
    void addColor(unsigned argb, float position) {
        colors_.push_back(argb);
        positions_.push_back(position);
    }
    // The colors in the order in which they were added.
    const std::vector<unsigned>& getColors() const { return colors_; }
    // The positions that were given, in the same order.
    const std::vector<float>& getPositions() const { return positions_; }

    // Sets the center. The middle of the bounds at first.
    void setCenter(double x, double y) {
        x_ = x;
        y_ = y;
    }
    // The x of the center.
    double getCenterX() const { return x_; }
    // The y of the center.
    double getCenterY() const { return y_; }

    // Sets whether lengths are in object coordinates or, as at first, in fractions of the object's
    // bounds.
    void setUserSpace(bool userSpace) { userSpace_ = userSpace; }
    // The value that setUserSpace set.
    bool isUserSpace() const { return userSpace_; }

protected:
    CenteredGradient() = default;

private:
    std::vector<unsigned> colors_;
    std::vector<float> positions_;
    double x_ = 0.5;
    double y_ = 0.5;
    bool userSpace_ = false;
};

}  // namespace orvane::display::graphics
