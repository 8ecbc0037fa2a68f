#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixelSource.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

// An image under a transformation: enlarged by linear interpolation, reduced by averaging. Its edge
// pixels continue outside it; the caller cuts them off by the coverage of the image's rectangle.
class ImageSource final : public PixelSource {
public:
    // `toPixels` maps the image, top row first, to the canvas's pixels. It is drawable.
    ImageSource(const CGImage& image, const CGAffineTransform& toPixels);

    // False when memory is exhausted or the reduction exceeds the supported range. Paint nothing
    // then.
    bool isValid() const { return image_ != nullptr; }

    void fetch(const PixelRect& area, std::uint32_t* colors) const override;

private:
    PixmanImage image_;
    // The canvas pixel at which the sampling grid begins.
    int originX_ = 0;
    int originY_ = 0;
};

// Composites the image over the canvas without scaling, with its corner at (left, top). `clip` lies
// inside both.
void paintImage(const Bitmap& bitmap, const CGImage& image, int left, int top,
                const PixelRect& clip);

}  // namespace orvane::platform
