#include "platform/coregraphics/Outline.h"

#include <algorithm>
#include <cmath>

namespace orvane::platform {

void Segments::append(CGPoint p) {
    points.push_back(p);
    min = {std::min(min.x, p.x), std::min(min.y, p.y)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y)};
    finite = finite && std::isfinite(p.x) && std::isfinite(p.y);
}

void Segments::beginIfNeeded(CGPoint p) {
    if (verbs.empty()) {
        moveTo(p);
    } else if (verbs.back() == Verb::Close) {
        moveTo(start_);
    }
}

CGPoint Segments::currentPoint() const {
    return verbs.back() == Verb::Close ? start_ : points.back();
}

void Segments::moveTo(CGPoint p) {
    verbs.push_back(Verb::Move);
    append(p);
    start_ = p;
}

void Segments::lineTo(CGPoint p) {
    beginIfNeeded(p);
    verbs.push_back(Verb::Line);
    append(p);
}

void Segments::curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
    beginIfNeeded(c1);
    verbs.push_back(Verb::Curve);
    append(c1);
    append(c2);
    append(p);
}

void Segments::close() {
    if (!verbs.empty() && verbs.back() != Verb::Close) {
        verbs.push_back(Verb::Close);
    }
}

bool CGPath::Outline::isEmpty() const {
    const auto* segments = std::get_if<Segments>(&form);
    return segments != nullptr && segments->verbs.empty();
}

bool CGPath::Outline::isFinite() const {
    if (const auto* segments = std::get_if<Segments>(&form)) {
        return segments->finite;
    }
    if (const auto* rounded = std::get_if<RoundedRect>(&form)) {
        return platform::isFinite(rounded->rect) && std::isfinite(rounded->corner.width) &&
               std::isfinite(rounded->corner.height);
    }
    return platform::isFinite(controlBox());
}

CGRect CGPath::Outline::controlBox() const {
    if (const auto* rect = std::get_if<Rect>(&form)) {
        return rect->rect;
    }
    if (const auto* ellipse = std::get_if<Ellipse>(&form)) {
        return ellipse->rect;
    }
    if (const auto* rounded = std::get_if<RoundedRect>(&form)) {
        return rounded->rect;
    }
    const auto& segments = std::get<Segments>(form);
    return {segments.min, {segments.max.x - segments.min.x, segments.max.y - segments.min.y}};
}

Segments& CGPath::Outline::segments() {
    if (!std::holds_alternative<Segments>(form)) {
        Segments expanded;
        emit(expanded);
        form = std::move(expanded);
    }
    return std::get<Segments>(form);
}

}  // namespace orvane::platform
