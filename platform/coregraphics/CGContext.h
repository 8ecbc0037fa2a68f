#pragma once

#include <span>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CGDrawable;
class CGGradient;
class CGImage;
class CGPath;

enum class CGPathDrawingMode { Fill = 0, EOFill = 1, Stroke = 2, FillStroke = 3, EOFillStroke = 4 };

// Bits for drawLinearGradient: whether the gradient continues before its start and after its end.
enum CGGradientDrawingOptions : unsigned {
    kCGGradientDrawsBeforeStartLocation = 1,
    kCGGradientDrawsAfterEndLocation = 2,
};

// The interface of a canvas. The creator of a canvas chooses the direction of the y axis of user
// space. Canvases of views have their y axis down; callers that draw text or images, whose own y
// axis is up, flip locally with scaleCTM(1, -1).
//
// The graphics state that saveGState and restoreGState save consists of the transformation, the
// clip, the colors, the line width and the dash. It does not contain the current path. No operation
// fails: transformations that cannot be inverted, coordinates that are not finite and invalid
// dashes draw nothing or their nearest sensible form, and later drawing is not affected.
//
// CGBitmapContext paints pixels; CGRecordingContext records the calls. A canvas is used on one
// thread at a time.
class ORVANE_EXPORT CGContext {
public:
    virtual ~CGContext() = default;

    virtual void saveGState() = 0;
    // Does nothing without a matching saveGState.
    virtual void restoreGState() = 0;

    virtual void translateCTM(double tx, double ty) = 0;
    virtual void scaleCTM(double sx, double sy) = 0;
    virtual void concatCTM(const CGAffineTransform& transform) = 0;

    virtual void clipToRect(const CGRect& rect) = 0;
    // Intersects the clip with the current path (nonzero winding rule) and empties the path.
    virtual void clip() = 0;

    virtual void setRGBFillColor(double r, double g, double b, double a) = 0;
    virtual void setRGBStrokeColor(double r, double g, double b, double a) = 0;
    virtual void setLineWidth(double width) = 0;
    virtual void setLineDash(double phase, std::span<const double> lengths) = 0;

    virtual void moveToPoint(double x, double y) = 0;
    virtual void addLineToPoint(double x, double y) = 0;
    virtual void addRect(const CGRect& rect) = 0;
    // Appends the path as it is now, mapped by the current transformation.
    virtual void addPath(const CGPath& path) = 0;
    // Paints the current path and empties it.
    virtual void drawPath(CGPathDrawingMode mode) = 0;
    virtual void strokePath() = 0;

    virtual void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                    unsigned options) = 0;
    // Images have their y axis up: the top row of the image is at the largest y of the rectangle.
    virtual void drawImage(const CGRect& rect, const CGImage& image) = 0;

    virtual void setTextMatrix(const CGAffineTransform& matrix) = 0;
    // Draw a CTLine and a CTFrame at the text position (0, 0) of the current user space, y axis up.
    virtual void drawLine(const CGDrawable& line) = 0;
    virtual void drawFrame(const CGDrawable& frame) = 0;
};

}  // namespace orvane::platform
