#pragma once

#include <memory>
#include <optional>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A mutable outline: subpaths of lines and curves in user space. Built once per change by its
// owner, appended as it is at paint time. The y axis of the caller's space gives the sense of
// angles: positive angles run from the x axis towards the y axis.
class ORVANE_EXPORT CGPath {
public:
    CGPath();
    ~CGPath();
    CGPath(CGPath&&) noexcept;
    CGPath& operator=(CGPath&&) noexcept;
    CGPath(const CGPath&) = delete;
    CGPath& operator=(const CGPath&) = delete;

    bool isEmpty() const;
    void moveToPoint(double x, double y);
    void addLineToPoint(double x, double y);
    void addCurveToPoint(double c1x, double c1y, double c2x, double c2y, double x, double y);
    void addQuadCurveToPoint(double cx, double cy, double x, double y);
    // Connected lines through the points, beginning a new subpath.
    void addLines(std::span<const CGPoint> points);
    void addRect(const CGRect& rect);
    // Radii beyond half the side are cut to it, negative ones count as positive.
    void addRoundedRect(const CGRect& rect, double cornerWidth, double cornerHeight);
    void addEllipseInRect(const CGRect& rect);
    // A piece of a circle under `matrix`, joined by a line to the current point if there is one.
    // Angles in radians; the sign of `delta` gives the direction.
    void addRelativeArc(const CGAffineTransform& matrix, double x, double y, double radius,
                        double startAngle, double delta);
    void closeSubpath();

    // The smallest box around the curves themselves, without their control points; none (the
    // interface's null rectangle) for an empty path and for one with a coordinate that is not
    // finite, which is nowhere.
    std::optional<CGRect> getPathBoundingBox() const;

    // The raster form of the outline, for the contexts of this room. It is shared with whoever
    // took it and never changes under them: a path that goes on to change takes a copy first.
    struct Outline;
    std::shared_ptr<const Outline> outline() const;

private:
    Outline& writable();

    std::shared_ptr<Outline> outline_;
};

}  // namespace orvane::platform
