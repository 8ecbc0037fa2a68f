#pragma once

#include <memory>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CGDrawable;
class CGGradient;
class CGGroup;
class CGImage;
class CGPath;

// What drawPath paints. EO means the even-odd fill rule; the others fill by the nonzero
// winding rule.
enum class CGPathDrawingMode { Fill = 0, EOFill = 1, Stroke = 2, FillStroke = 3, EOFillStroke = 4 };

// Bits for drawLinearGradient and drawRadialGradient: whether the gradient continues before its
// start and after its end.
enum CGGradientDrawingOptions : unsigned {
    kCGGradientDrawsBeforeStartLocation = 1,
    kCGGradientDrawsAfterEndLocation = 2,
};

// A blurred silhouette behind a group. Nothing for a color that is transparent.
struct CGShadow {
    CGSize offset;
    double radius = 0;  // as CGGroupStyle::blurRadius
    CGColor color{0, 0, 0, 0};

    friend bool operator==(const CGShadow&, const CGShadow&) = default;
};

// How a group is drawn: blurred, then with a shadow, then both with an opacity.
struct CGGroupStyle {
    double opacity = 1;
    // Twice the standard deviation of the Gaussian curve. Negative or NaN: sharp.
    double blurRadius = 0;
    CGShadow shadow;
    // From the coordinates of the lengths above to user space. A radius is multiplied by the square
    // root of the determinant, so that a blur is the same in all directions.
    CGAffineTransform transform;

    friend bool operator==(const CGGroupStyle&, const CGGroupStyle&) = default;
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

    // Pushes a copy of the graphics state.
    virtual void saveGState() = 0;
    // Pops the graphics state that was pushed last. Does nothing without a matching saveGState.
    virtual void restoreGState() = 0;

    // Apply a transformation before the current one, in user space:
    virtual void translateCTM(double tx, double ty) = 0;
    virtual void scaleCTM(double sx, double sy) = 0;
    virtual void concatCTM(const CGAffineTransform& transform) = 0;

    // How many device pixels a unit of each axis of user space is long.
    virtual CGSize unitsInDevicePixels() const = 0;

    // Intersects the clip with a rectangle in user space.
    virtual void clipToRect(const CGRect& rect) = 0;
    // Intersects the clip with the current path (nonzero winding rule) and empties the path.
    virtual void clip() = 0;

    // Set a color. The components are from 0 to 1, not premultiplied:
    virtual void setRGBFillColor(double r, double g, double b, double a) = 0;
    virtual void setRGBStrokeColor(double r, double g, double b, double a) = 0;
    // In user space units.
    virtual void setLineWidth(double width) = 0;
    // `lengths` are those of the dashes and the gaps in turn, in user space units; empty for a
    // solid line. The pattern begins `phase` units after its start.
    virtual void setLineDash(double phase, std::span<const double> lengths) = 0;

    // Extend the current path, in user space:
    virtual void moveToPoint(double x, double y) = 0;
    virtual void addLineToPoint(double x, double y) = 0;
    virtual void addRect(const CGRect& rect) = 0;
    // Appends the path as it is now, mapped by the current transformation.
    virtual void addPath(const CGPath& path) = 0;
    // Paint the current path and empty it:
    virtual void drawPath(CGPathDrawingMode mode) = 0;
    virtual void strokePath() = 0;
    // Makes clip() use the stroke of the current path instead of its inside. The stroke has the
    // width, the dash and the transformation of this moment. Ends when the path is emptied.
    virtual void replacePathWithStrokedPath() = 0;

    // Fills the clip with a gradient along the axis from `start` to `end`, in user space. `options`
    // are bits of CGGradientDrawingOptions.
    virtual void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                    unsigned options) = 0;
    // Fills the clip with a gradient from one circle, in user space, to another one. `options` are
    // bits of CGGradientDrawingOptions. What no circle between them touches stays as it is.
    virtual void drawRadialGradient(const CGGradient& gradient, CGPoint startCenter,
                                    double startRadius, CGPoint endCenter, double endRadius,
                                    unsigned options) = 0;
    // Fills the clip with a gradient around a point, in user space. It begins at `angle` (radians
    // from the x axis toward the y axis) and goes once around in this direction.
    virtual void drawConicGradient(const CGGradient& gradient, CGPoint center, double angle) = 0;
    // Images have their y axis up: the top row of the image is at the largest y of the rectangle.
    virtual void drawImage(const CGRect& rect, const CGImage& image) = 0;

    // Sets the transformation of text before that of user space.
    virtual void setTextMatrix(const CGAffineTransform& matrix) = 0;
    // Draw a CTLine or a CTFrame at the position (0, 0) of the current user space, y axis up:
    virtual void drawLine(const CGDrawable& line) = 0;
    virtual void drawFrame(const CGDrawable& frame) = 0;

    // Begins a group, and saves the graphics state: until the matching endGroup, drawing goes to
    // transparent pixels of its own, without the clip. `area`, in user space, is the part of the
    // result that is wanted: drawing that has no effect on it may be omitted.
    virtual void beginGroup(const CGRect& area, const CGGroupStyle& style) = 0;
    // Ends the group, restores the state, and draws the result under the clip. Returns it to be
    // drawn again; null if the canvas cannot. Does nothing without a matching beginGroup.
    virtual std::shared_ptr<const CGGroup> endGroup() = 0;
    // Draws a group again, with another opacity, where the origin of `transform` (from the
    // coordinates of the style's lengths to user space) is now. Returns false, and draws nothing,
    // if the transformation to pixels has changed by more than a shift of whole pixels.
    virtual bool drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                           double opacity) = 0;
};

}  // namespace orvane::platform
