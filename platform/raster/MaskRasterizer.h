#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/ConvexUnion.h"
#include "platform/raster/Mask.h"
#include "platform/raster/OutlineClipper.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// Computes coverage on a scratch surface that it keeps: with Cairo, or as a ConvexUnion for
// wide strokes of many overlapping lines and for miters under stretched pens. Used by one thread.
class MaskRasterizer {
public:
    struct Request {
        const CGPath::Outline& outline;
        // `transform` maps the outline to the mask's pixels. `pen` maps user space to pixels,
        // without translation, for the pen of a stroke. Both are drawable.
        CGAffineTransform transform;
        CGAffineTransform pen;
        Coverage coverage;
        StrokeStyle stroke;  // already validated
        int width;           // of the mask, at most Mask::kSide
        int height;
        // The largest distance in pixels between an outline and its stroke.
        double reach;
        // Whether the shape extends beyond the mask.
        bool isPartial;
    };

    MaskRasterizer();

    // None when Cairo fails: memory is exhausted, or the numbers are out of its range.
    std::optional<Mask> rasterize(const Request& request);

private:
    void reset();
    void draw(const Request& request);
    // False if nothing is in the area of the mask.
    bool drawPartial(const Request& request);
    // Strokes the current path.
    void stroke(const Request& request, std::span<const double> dash);

    // Strokes the lines as a union.
    void strokeAsUnion(const Request& request, const std::vector<OutlineClipper::Run>& runs,
                       const StrokeReach& reach);

    CairoSurface surface_;
    CairoContext cairo_;
    std::unique_ptr<ConvexUnion> union_;  // made when it is first used
};

}  // namespace orvane::platform
