#pragma once

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"

namespace orvane::display::graphics::quartz {

class QuartzClipContainer : public virtual ClipContainer, public virtual QuartzDrawable {
public:
    std::string getDescription() const override { return "QuartzClipContainer"; }

protected:
    // Clips to the bounds as they stand in the parent's coordinates; the dirty rectangle is not
    // used.
    void clipRect(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics::quartz
