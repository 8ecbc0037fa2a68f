#pragma once

#include <memory>
#include <utility>

#include "orvane/display/graphics/GradientAxis.h"

namespace orvane::display::graphics {

class Drawable;

// A drawable that is repeated over a box to fill an object. No fill paints a pattern yet. The
// pattern shares ownership of the drawable.
class Pattern : public GradientAxis {
public:
    // Sets the drawable.
    void setDrawable(std::shared_ptr<Drawable> drawable) { drawable_ = std::move(drawable); }
    // The drawable; null when none is set.
    const std::shared_ptr<Drawable>& getDrawable() const { return drawable_; }

    // Sets whether the box is in object coordinates (the default) or in fractions of the object's
    // bounds.
    void setUserSpace(bool userSpace) { userSpace_ = userSpace; }
    // The value that setUserSpace set.
    bool isUserSpace() const { return userSpace_; }

private:
    std::shared_ptr<Drawable> drawable_;
    bool userSpace_ = true;
};

}  // namespace orvane::display::graphics
