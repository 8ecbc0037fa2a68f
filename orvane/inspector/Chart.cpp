#include "orvane/inspector/Chart.h"

#include <utility>

#include "platform/coregraphics/CGContext.h"

namespace orvane::inspector {

void Chart::show(std::vector<Series> series, const display::geometry::Size<double>& size) {
    if (series != series_ || size != size_) {
        series_ = std::move(series);
        size_ = size;
        invalidate(true);
    }
}

void Chart::doValidate(const display::geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (canvas == nullptr) {
        return;
    }
    for (const Series& each : series_) {
        const auto part = [&](int shift) { return (each.color >> shift & 255U) / 255.0; };
        canvas->setRGBFillColor(part(16), part(8), part(0), part(24));
        for (std::size_t i = 0; i < each.points.size(); ++i) {
            const platform::CGPoint& point = each.points[i];
            if (i % each.corners == 0) {
                canvas->moveToPoint(point.x, point.y);
            } else {
                canvas->addLineToPoint(point.x, point.y);
            }
        }
        canvas->drawPath(platform::CGPathDrawingMode::Fill);
    }
}

}  // namespace orvane::inspector
