#include "platform/appkit/NSTextField.h"

#include <algorithm>
#include <cmath>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTLine.h"

namespace orvane::platform {

namespace {

// Similar to the default theme of GTK.
constexpr char kFontName[] = "sans-serif";
constexpr double kFontSize = 13;
constexpr double kPadding = 8;
constexpr double kCornerRadius = 5;
constexpr CGColor kTextColor{0.18, 0.2, 0.21, 1};

}  // namespace

void NSTextField::setStringValue(const std::string& value) {
    if (stringValue_ != value) {
        stringValue_ = value;
        line_.reset();
        setNeedsDisplayInRect(bounds());
        stateDidChange();
    }
}

void NSTextField::setEnabled(bool enabled) {
    if (enabled_ != enabled) {
        enabled_ = enabled;
        setNeedsDisplayInRect(bounds());
        stateDidChange();
    }
}

void NSTextField::drawRect(const CGRect&) {
    CGContext* canvas = NSGraphicsContext::currentGraphicsPort();
    if (canvas == nullptr) {
        return;
    }
    const CGSize size = bounds().size;
    const CGRect frame{{0.5, 0.5}, {std::max(size.width - 1, 0.0), std::max(size.height - 1, 0.0)}};
    CGPath outline;
    outline.addRoundedRect(frame, kCornerRadius, kCornerRadius);
    const double shade = enabled_ ? 1.0 : 0.95;
    canvas->setRGBFillColor(shade, shade, shade, 1);
    canvas->setRGBStrokeColor(0.72, 0.72, 0.74, 1);
    canvas->setLineWidth(1);
    canvas->addPath(outline);
    canvas->drawPath(CGPathDrawingMode::FillStroke);
    if (stringValue_.empty()) {
        return;
    }
    if (!line_) {
        CFMutableAttributedString text;
        CTAttributes attributes;
        attributes.font = CTFont::createWithName(kFontName, kFontSize);
        attributes.foregroundColor = kTextColor;
        text.append(stringValue_, attributes);
        line_ = CTLine::createWithAttributedString(text);
    }
    const CTLine::TypographicBounds& line = line_->typographicBounds();
    canvas->saveGState();
    canvas->clipToRect({{kPadding, 0}, {std::max(size.width - 2 * kPadding, 0.0), size.height}});
    canvas->translateCTM(kPadding, std::round((size.height + line.ascent - line.descent) / 2));
    canvas->scaleCTM(1, -1);  // the y axis of text points up
    canvas->drawLine(*line_);
    canvas->restoreGState();
}

}  // namespace orvane::platform
