#include "platform/web/NSWebPagePicture.h"

#include <algorithm>
#include <string>

#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSTextLayout.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/web/NSWebEngine.h"

namespace orvane::platform {

namespace {

constexpr double kGlobe = 44;    // points across
constexpr double kMargin = 12;   // at the sides
constexpr double kSpacing = 10;  // between the globe and the texts

void drawGlobe(CGContext& canvas, const CGRect& place) {
    canvas.setRGBStrokeColor(0.62, 0.66, 0.7, 1);
    canvas.setLineWidth(1.5);
    const double radius = place.size.width / 2;
    const double left = place.origin.x;
    const double top = place.origin.y;
    // The edge and a meridian, the axis, and three circles of latitude.
    for (const double part : {1.0, 0.45}) {
        CGPath ellipse;
        ellipse.addEllipseInRect(
            {{left + radius * (1 - part), top}, {2 * radius * part, 2 * radius}});
        canvas.addPath(ellipse);
        canvas.strokePath();
    }
    canvas.moveToPoint(left + radius, top);
    canvas.addLineToPoint(left + radius, top + 2 * radius);
    for (const double height : {-0.5, 0.0, 0.5}) {
        const double half = radius * (height == 0 ? 1 : 0.866);  // the cosine of 30 degrees
        canvas.moveToPoint(left + radius - half, top + radius * (1 + height));
        canvas.addLineToPoint(left + radius + half, top + radius * (1 + height));
    }
    canvas.strokePath();
}

// Paints a centered line and returns where it ends.
double drawCentered(CGContext& canvas, const CGRect& bounds, double y, const std::string& text,
                    double size, const CGColor& color) {
    if (text.empty()) {
        return y;
    }
    NSTextFieldStyle style;
    style.fontSize = size;
    style.textColor = color;
    const double room = std::max(bounds.size.width - 2 * kMargin, 0.0);
    const NSTextLayout layout(NSTextLayout::Kind::Line, text, style, true, room);
    const CGSavedState saved(canvas);
    const double left =
        bounds.origin.x + std::max(kMargin, (bounds.size.width - layout.size().width) / 2);
    canvas.clipToRect({{left, y}, {room, layout.size().height}});
    canvas.translateCTM(left, y);
    layout.draw(canvas, 0, layout.size().height);
    return y + layout.size().height + 4;
}

}  // namespace

void drawWebPage(CGContext& canvas, const CGRect& bounds, const NSWebState& state) {
    const CGSavedState saved(canvas);
    canvas.clipToRect(bounds);
    canvas.setRGBFillColor(0.95, 0.96, 0.97, 1);
    canvas.addRect(bounds);
    canvas.drawPath(CGPathDrawingMode::Fill);
    const double center = bounds.origin.x + bounds.size.width / 2;
    const double height = kGlobe + kSpacing + 40;
    const double top = bounds.origin.y + std::max((bounds.size.height - height) / 2, kSpacing);
    drawGlobe(canvas, {{center - kGlobe / 2, top}, {kGlobe, kGlobe}});
    double y = top + kGlobe + kSpacing;
    y = drawCentered(canvas, bounds, y, state.title, 15, {0.2, 0.24, 0.28, 1});
    drawCentered(canvas, bounds, y, state.address, 12, {0.42, 0.46, 0.5, 1});
}

}  // namespace orvane::platform
