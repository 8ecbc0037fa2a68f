#include "platform/map/visibleLine.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/map/NSMapCamera.h"

namespace orvane::platform {

namespace {

// Points that are closer together are one, in points of the view.
constexpr double kResolution = 0.5;

// Returns the part of the segment in the rectangle, by the algorithm of Liang and Barsky.
std::optional<std::pair<CGPoint, CGPoint>> clip(CGPoint a, CGPoint b, const CGRect& rect) {
    const CGPoint way{b.x - a.x, b.y - a.y};
    double from = 0;
    double to = 1;
    // The edge is reached after `room` of the way along its axis.
    const auto cut = [&](double along, double room) {
        if (along == 0) {
            return room >= 0;
        }
        const double part = room / along;
        along < 0 ? from = std::max(from, part) : to = std::min(to, part);
        return from <= to;
    };
    const bool isVisible =
        cut(-way.x, a.x - rect.origin.x) && cut(way.x, rect.origin.x + rect.size.width - a.x) &&
        cut(-way.y, a.y - rect.origin.y) && cut(way.y, rect.origin.y + rect.size.height - a.y);
    if (!isVisible) {
        return {};
    }
    return std::pair{CGPoint{a.x + from * way.x, a.y + from * way.y},
                     CGPoint{a.x + to * way.x, a.y + to * way.y}};
}

}  // namespace

void unwrap(std::span<CGPoint> places) {
    for (std::size_t i = 1; i < places.size(); ++i) {
        places[i].x -= std::round(places[i].x - places[i - 1].x);
    }
}

std::vector<std::vector<CGPoint>> visibleLine(std::span<const CGPoint> places,
                                              const NSMapCamera& camera, CGSize size,
                                              double margin) {
    std::vector<std::vector<CGPoint>> parts;
    if (places.size() < 2) {
        return parts;
    }
    const CGRect rect{{-margin, -margin}, {size.width + 2 * margin, size.height + 2 * margin}};
    const double world = camera.worldSize();
    const CGPoint corner = camera.toPlace({0, 0});
    const auto [west, east] = std::ranges::minmax(places, {}, &CGPoint::x);
    const double first = std::ceil(camera.toPlace(rect.origin).x - east.x);
    const double last = std::floor(camera.toPlace({rect.origin.x + rect.size.width, 0}).x - west.x);
    for (double copy = first; copy <= last; ++copy) {
        const auto toView = [&](CGPoint place) {
            return CGPoint{(place.x + copy - corner.x) * world, (place.y - corner.y) * world};
        };
        CGPoint previous = toView(places.front());
        bool isOpen = false;  // the last part ends at `previous`
        for (std::size_t i = 1; i < places.size(); ++i) {
            const CGPoint point = toView(places[i]);
            const bool isLast = i + 1 == places.size();
            if (!isLast && std::hypot(point.x - previous.x, point.y - previous.y) < kResolution) {
                continue;
            }
            const auto visible = clip(previous, point, rect);
            if (visible) {
                if (!isOpen || parts.back().back() != visible->first) {
                    parts.push_back({visible->first});
                }
                parts.back().push_back(visible->second);
            }
            isOpen = visible && visible->second == point;
            previous = point;
        }
    }
    return parts;
}

}  // namespace orvane::platform
