#pragma once

#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/PixelSource.h"

namespace orvane::platform {

struct CGAffineTransform;
class CGGradient;

// A gradient along an axis. Straight (not premultiplied) colors are interpolated. An axis without
// length shows only what follows its end.
class GradientSource final : public PixelSource {
public:
    // `toPixels` is drawable; `start` and `end` are in its source space; the gradient has at least
    // one stop.
    GradientSource(const CGGradient& gradient, const CGAffineTransform& toPixels, CGPoint start,
                   CGPoint end, unsigned options);

    void fetch(const PixelRect& area, std::uint32_t* colors) const override;

private:
    const CGGradient& gradient_;
    unsigned options_;
    bool hasAxis_;
    // The position of a pixel along the axis is 0 at start_ and increases by these amounts per
    // pixel to the right and down.
    CGPoint start_;
    double perColumn_ = 0;
    double perRow_ = 0;
};

}  // namespace orvane::platform
