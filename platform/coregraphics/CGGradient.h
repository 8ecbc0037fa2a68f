#pragma once

#include <memory>
#include <span>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"

namespace orvane::platform {

// The colours of a gradient and where they stand, 0 to 1, along an axis that the canvas is given
// when it paints. Immutable and shared.
class ORVANE_EXPORT CGGradient {
public:
    struct Stop {
        double location;
        CGColor color;
    };

    // `components` are four a colour: r, g, b, a. Colours without a location are spread evenly
    // behind the last one that has one; no locations at all spread them over the whole axis.
    static std::shared_ptr<const CGGradient> createWithColorComponents(
        std::span<const double> components, std::span<const double> locations);

    const std::vector<Stop>& stops() const { return stops_; }

private:
    std::vector<Stop> stops_;
};

}  // namespace orvane::platform
