#pragma once

#include <memory>
#include <optional>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A mutable outline: subpaths of lines and curves in user space. Its owner builds it once per
// change and adds it to a canvas at each paint. Positive angles turn from the x axis toward the y
// axis.
class ORVANE_EXPORT CGPath {
public:
    CGPath();
    ~CGPath();
    CGPath(CGPath&&) noexcept;
    CGPath& operator=(CGPath&&) noexcept;
    CGPath(const CGPath&) = delete;
    CGPath& operator=(const CGPath&) = delete;

    // Whether nothing was added yet.
    bool isEmpty() const;
    // Extend the path. A line or a curve without a current point begins a subpath:
    void moveToPoint(double x, double y);
    void addLineToPoint(double x, double y);
    void addCurveToPoint(double c1x, double c1y, double c2x, double c2y, double x, double y);
    void addQuadCurveToPoint(double cx, double cy, double x, double y);
    // Adds a new subpath of lines that connect the points.
    void addLines(std::span<const CGPoint> points);
    // Adds a closed subpath; a negative size extends from the origin in the opposite direction.
    void addRect(const CGRect& rect);
    // Adds a closed subpath. Radii larger than half the side are reduced to it; negative radii
    // count as positive.
    void addRoundedRect(const CGRect& rect, double cornerWidth, double cornerHeight);
    // Adds a closed subpath: the ellipse that touches the sides of the rectangle.
    void addEllipseInRect(const CGRect& rect);
    // Adds an arc of a circle, mapped by `matrix`, with a line from the current point if there is
    // one. Angles are in radians; the sign of `delta` gives the direction.
    void addRelativeArc(const CGAffineTransform& matrix, double x, double y, double radius,
                        double startAngle, double delta);
    // Connects the current point to the start of its subpath. Does nothing to an empty path.
    void closeSubpath();

    // The smallest box around the curves, without their control points. None (the null rectangle of
    // the interface) for an empty path and for a path with a coordinate that is not finite.
    std::optional<CGRect> getPathBoundingBox() const;

    // How far a stroke reaches beyond the box around the curves, as a factor of half its width: 1,
    // or more at sharp corners, up to the limit of 10 beyond which canvases cut corners off.
    double longestMiter() const;

    // The outline in the form that canvases use.
    struct Outline;
    // Returns the outline, which is shared and never changes: a later change to this path copies it
    // first. Never null.
    std::shared_ptr<const Outline> outline() const;

private:
    Outline& writable();

    std::shared_ptr<Outline> outline_;
};

}  // namespace orvane::platform
