#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/PixelSource.h"

namespace orvane::platform {

class CGGradient;

// The part that gradients around a point have in common: places of pixels relative to that point,
// in the gradient's space.
class RoundGradientSource : public PixelSource {
public:
    void fetch(const PixelRect& area, std::uint32_t* colors) const override;

protected:
    // `toPixels` is drawable; the gradient has at least one stop. Both are in the gradient's space.
    RoundGradientSource(const CGGradient& gradient, const CGAffineTransform& toPixels,
                        CGPoint center, unsigned options);

    // The position in the gradient, from 0 to 1, at a place relative to the center. A NaN is
    // transparent.
    virtual double positionAt(double x, double y) const = 0;

private:
    const CGGradient& gradient_;
    unsigned options_;
    CGPoint center_;  // in pixels
    CGAffineTransform fromPixels_;
};

// A gradient from one circle to another.
class RadialGradientSource final : public RoundGradientSource {
public:
    // See CGContext::drawRadialGradient.
    RadialGradientSource(const CGGradient& gradient, const CGAffineTransform& toPixels,
                         CGPoint startCenter, double startRadius, CGPoint endCenter,
                         double endRadius, unsigned options);

private:
    double positionAt(double x, double y) const override;

    // The circle at position t has the center t * way_ and the radius startRadius_ + t * growth_.
    CGPoint way_;
    double startRadius_;
    double growth_;
    unsigned options_;
};

// A gradient around a point.
class ConicGradientSource final : public RoundGradientSource {
public:
    // See CGContext::drawConicGradient.
    ConicGradientSource(const CGGradient& gradient, const CGAffineTransform& toPixels,
                        CGPoint center, double angle);

private:
    double positionAt(double x, double y) const override;

    double angle_;
};

}  // namespace orvane::platform
