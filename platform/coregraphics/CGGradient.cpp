#include "platform/coregraphics/CGGradient.h"

#include <algorithm>

namespace orvane::platform {

std::shared_ptr<const CGGradient> CGGradient::createWithColorComponents(
    std::span<const double> components, std::span<const double> locations) {
    const std::size_t count = components.size() / 4;
    const std::size_t located = std::min(count, locations.size());
    auto gradient = std::make_shared<CGGradient>();
    gradient->stops_.reserve(count);
    // Colors after the last location share the rest of the axis evenly. Without any location the
    // first color is at 0, so there is one interval less.
    const double last = located > 0 ? limitedComponent(locations[located - 1]) : 0;
    const std::size_t first = located > 0 ? located - 1 : 0;
    const double intervals =
        static_cast<double>(std::max<std::size_t>(count, first + 2) - 1 - first);
    for (std::size_t i = 0; i < count; ++i) {
        const double location =
            i < located ? limitedComponent(locations[i])
                        : last + (1 - last) * static_cast<double>(i - first) / intervals;
        const double* c = components.data() + i * 4;
        gradient->stops_.push_back({location,
                                    {limitedComponent(c[0]), limitedComponent(c[1]),
                                     limitedComponent(c[2]), limitedComponent(c[3])}});
    }
    // Locations may come in any order. Equal ones keep their order and make a hard edge.
    std::ranges::stable_sort(gradient->stops_, {}, &Stop::location);
    return gradient;
}

}  // namespace orvane::platform
