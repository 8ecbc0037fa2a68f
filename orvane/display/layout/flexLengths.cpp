#include "orvane/display/layout/flexLengths.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane::display::layout {

namespace {

// The minimum counts if it is above the maximum.
double limited(const FlexItem& item, double length) {
    return std::max(std::min(length, item.max), item.min);
}

}  // namespace

std::vector<double> flexLengths(const std::vector<FlexItem>& items, double available) {
    std::vector<double> lengths;
    double sum = 0;
    for (const FlexItem& item : items) {
        lengths.push_back(limited(item, item.base));
        sum += lengths.back();
    }
    if (!std::isfinite(available)) {
        return lengths;
    }
    const bool grows = sum < available;
    const auto factorOf = [grows](const FlexItem& item) {
        return std::max(grows ? item.grow : item.shrink, 0.0);
    };
    std::vector<bool> isFrozen(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool isAtLimit = grows ? items[i].base > lengths[i] : items[i].base < lengths[i];
        isFrozen[i] = !(factorOf(items[i]) > 0) || isAtLimit;
    }
    const auto freeSpace = [&] {
        double space = available;
        for (std::size_t i = 0; i < items.size(); ++i) {
            space -= isFrozen[i] ? lengths[i] : items[i].base;
        }
        return space;
    };
    const double initialSpace = freeSpace();
    // Each pass freezes at least one item.
    while (std::find(isFrozen.begin(), isFrozen.end(), false) != isFrozen.end()) {
        double factors = 0;
        double weights = 0;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (!isFrozen[i]) {
                factors += factorOf(items[i]);
                weights += factorOf(items[i]) * (grows ? 1 : items[i].base);
            }
        }
        double space = freeSpace();
        if (factors < 1 && std::abs(initialSpace * factors) < std::abs(space)) {
            space = initialSpace * factors;
        }
        double violation = 0;
        std::vector<double> wanted(items.size());
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (!isFrozen[i]) {
                const double weight = factorOf(items[i]) * (grows ? 1 : items[i].base);
                wanted[i] = items[i].base + (weights > 0 ? space * weight / weights : 0);
                lengths[i] = limited(items[i], std::max(wanted[i], 0.0));
                violation += lengths[i] - wanted[i];
            }
        }
        // Those that were cut to the side of the total violation are final; all, if there is none.
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (!isFrozen[i]) {
                const double own = lengths[i] - wanted[i];
                // Not a number freezes all, too.
                isFrozen[i] = violation > 0 ? own > 0 : !(violation < 0) || own < 0;
            }
        }
    }
    return lengths;
}

}  // namespace orvane::display::layout
