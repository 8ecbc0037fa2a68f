#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixelSource.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

// A bitmap under a transformation: enlarged by linear interpolation, reduced by averaging what
// falls together in a pixel. Beyond its edges it goes on as it is at the edge; what may be seen of
// it is cut by the coverage of its rectangle.
class ImageSource final : public PixelSource {
public:
    // `toPixels` takes the bitmap, top row first, to the canvas's pixels, and can be inverted.
    ImageSource(const CGImage& image, const CGAffineTransform& toPixels);

    // False when there is no memory for it, or it is reduced beyond any sense: paint nothing then.
    bool isValid() const { return image_ != nullptr; }

    void fetch(const PixelRect& area, std::uint32_t* colors) const override;

private:
    PixmanImage image_;
    // Where the sampling grid begins on the canvas.
    int originX_ = 0;
    int originY_ = 0;
};

// Lays the bitmap over the canvas's pixels one to one, its corner at left, top, within `clip`,
// which lies inside both.
void paintImage(const Bitmap& bitmap, const CGImage& image, int left, int top,
                const PixelRect& clip);

}  // namespace orvane::platform
