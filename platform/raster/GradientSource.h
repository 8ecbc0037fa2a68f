#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/raster/PixelSource.h"

namespace orvane::platform {

// A gradient along an axis. Colours are interpolated as they are given, not premultiplied. An axis
// of no length has only what lies behind its end.
class GradientSource final : public PixelSource {
public:
    // `toPixels` can be inverted; start and end lie in its space; the gradient has a stop.
    GradientSource(const CGGradient& gradient, const CGAffineTransform& toPixels, CGPoint start,
                   CGPoint end, unsigned options);

    void fetch(const PixelRect& area, std::uint32_t* colors) const override;

private:
    const CGGradient& gradient_;
    unsigned options_;
    bool hasAxis_;
    // Where along the axis a pixel lies: 0 at the start, growing so much a pixel right and down.
    CGPoint start_;
    double perColumn_ = 0;
    double perRow_ = 0;
};

}  // namespace orvane::platform
