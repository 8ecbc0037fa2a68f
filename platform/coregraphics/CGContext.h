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

// A bit set, as drawLinearGradient takes it: 3 is both.
enum CGGradientDrawingOptions : unsigned {
    kCGGradientDrawsBeforeStartLocation = 1,
    kCGGradientDrawsAfterEndLocation = 2,
};

// A canvas. User space has its y axis where the one who made the canvas put it: the canvases of
// views run downward, so whoever draws text or bitmaps, whose own axis runs upward, flips locally
// with scaleCTM(1, -1).
//
// The graphics state that saveGState and restoreGState bracket is the transformation, the clip, the
// colours, the line width and the dash; the current path is not part of it. No operation fails: a
// transformation that cannot be inverted, coordinates that are not finite and dashes that make no
// sense paint nothing or their nearest sensible form, and the canvas stays alive.
//
// Two kinds exist: one paints pixels (CGBitmapContext), one records the calls (CGRecordingContext).
// Used on one thread at a time.
class ORVANE_EXPORT CGContext {
public:
    virtual ~CGContext() = default;

    virtual void saveGState() = 0;
    // Without a matching saveGState it does nothing.
    virtual void restoreGState() = 0;

    virtual void translateCTM(double tx, double ty) = 0;
    virtual void scaleCTM(double sx, double sy) = 0;
    virtual void concatCTM(const CGAffineTransform& transform) = 0;

    virtual void clipToRect(const CGRect& rect) = 0;
    // Intersects the clip with the current path (non-zero winding), and empties the path.
    virtual void clip() = 0;

    virtual void setRGBFillColor(double r, double g, double b, double a) = 0;
    virtual void setRGBStrokeColor(double r, double g, double b, double a) = 0;
    virtual void setLineWidth(double width) = 0;
    virtual void setLineDash(double phase, std::span<const double> lengths) = 0;

    virtual void moveToPoint(double x, double y) = 0;
    virtual void addLineToPoint(double x, double y) = 0;
    virtual void addRect(const CGRect& rect) = 0;
    // Appends the outline as it stands, through the current transformation.
    virtual void addPath(const CGPath& path) = 0;
    // Paints the current path and empties it.
    virtual void drawPath(CGPathDrawingMode mode) = 0;
    virtual void strokePath() = 0;

    virtual void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                    unsigned options) = 0;
    // Bitmaps have their y axis up: the bitmap's top row lands at the rectangle's far y edge.
    virtual void drawImage(const CGRect& rect, const CGImage& image) = 0;

    virtual void setTextMatrix(const CGAffineTransform& matrix) = 0;
    // A CTLine and a CTFrame. They draw at the text position 0, 0 of the current user space, y up.
    virtual void drawLine(const CGDrawable& line) = 0;
    virtual void drawFrame(const CGDrawable& frame) = 0;
};

}  // namespace orvane::platform
