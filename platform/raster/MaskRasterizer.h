#pragma once

#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/Mask.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// Computes coverage with the raster library, on a scratch surface that it keeps. Used by one
// thread.
class MaskRasterizer {
public:
    struct Request {
        const CGPath::Outline& outline;
        // Outline to the mask's pixels, and user space to pixels (without translation) for the pen
        // of a stroke. Both can be inverted.
        CGAffineTransform transform;
        CGAffineTransform pen;
        Coverage coverage;
        StrokeStyle stroke;  // valid as it stands
        int width;           // of the mask, up to Mask::kSide
        int height;
        // How far from its outline a stroke can reach, in pixels.
        double reach;
        // Whether the outline leaves the mask's area by more than a stroke does.
        bool isPartial;
    };

    MaskRasterizer();

    Mask rasterise(const Request& request);

private:
    void reset();
    void draw(const Request& request);
    void drawPartial(const Request& request);
    void setPen(const Request& request, double distance);

    CairoSurface surface_;
    CairoContext cairo_;
};

}  // namespace orvane::platform
