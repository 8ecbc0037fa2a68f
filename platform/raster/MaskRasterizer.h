#pragma once

#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/Mask.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// Computes coverage with Cairo on a scratch surface that it keeps. Used by one thread.
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
        // The largest distance between a stroke and its outline, in pixels.
        double reach;
        // Whether the shape extends beyond the mask.
        bool isPartial;
    };

    MaskRasterizer();

    Mask rasterize(const Request& request);

private:
    void reset();
    void draw(const Request& request);
    void drawPartial(const Request& request);
    void setPen(const Request& request, double distance);

    CairoSurface surface_;
    CairoContext cairo_;
};

}  // namespace orvane::platform
