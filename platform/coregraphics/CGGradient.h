#pragma once

#include <memory>
#include <span>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"

namespace orvane::platform {

// The colors of a gradient and their locations, from 0 to 1, along an axis. The canvas receives the
// axis when it paints. Immutable and shared; safe to pass between threads.
class ORVANE_EXPORT CGGradient {
public:
    // A color and its location on the axis, from 0 to 1.
    struct Stop {
        double location;
        CGColor color;
    };

    // `components` holds four numbers per color: red, green, blue, alpha. Colors without a location
    // are spread evenly after the last color that has one; without any location all colors are
    // spread over the whole axis. Numbers outside 0 to 1 are limited to that range.
    static std::shared_ptr<const CGGradient> createWithColorComponents(
        std::span<const double> components, std::span<const double> locations);

    // The colors in the order in which they were given.
    const std::vector<Stop>& stops() const { return stops_; }

private:
    std::vector<Stop> stops_;
};

}  // namespace orvane::platform
