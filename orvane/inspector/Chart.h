#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::inspector {

// Polygons that change all the time. They are painted from their corners: the outline of a path
// would leave its coverage in a cache of the process, from which it would drop the application's.
class Chart final
    : public display::graphics::BoundedObject<display::graphics::quartz::QuartzDrawable> {
public:
    // Polygons of one color.
    struct Series {
        unsigned color = 0;       // ARGB
        std::size_t corners = 0;  // of each polygon
        std::vector<platform::CGPoint> points;
        friend bool operator==(const Series&, const Series&) = default;
    };

    // Shows the series, the first one at the back, clipped by nothing, in an area from the origin.
    void show(std::vector<Series> series, const display::geometry::Size<double>& size);

    std::string getDescription() const override { return "Chart"; }
    display::geometry::Rect<double> getBounds() override { return {{}, size_}; }

protected:
    void doValidate(const display::geometry::Rect<double>& rect) override;

private:
    std::vector<Series> series_;
    display::geometry::Size<double> size_;
};

}  // namespace orvane::inspector
