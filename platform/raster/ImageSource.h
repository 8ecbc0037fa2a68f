#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/raster/PixelSource.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

struct Bitmap;
class CGImage;

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
    // Pixman's numbers are short, so the canvas is divided into cells of this many pixels each way,
    // and positions are relative to the corner of a cell. The grid begins at the image's corner.
    static constexpr int kCell = 512;

    // Fetches `part` of `cell` to its place in `colors`, which holds `area`.
    void fetchFromCell(const PixelRect& cell, const PixelRect& part, pixman_image_t* target,
                       const PixelRect& area, std::uint32_t* colors) const;

    PixmanImage image_;
    CGAffineTransform toPixels_;
    CGAffineTransform fromPixels_;  // without translation
    double reach_ = 0;              // the largest coordinate in the image that Pixman can represent
    int left_ = 0;                  // the corner of the image's box on the canvas
    int top_ = 0;
};

// Composites the image over the canvas without scaling, with its corner at (left, top). `clip` lies
// inside both.
void paintImage(const Bitmap& bitmap, const CGImage& image, int left, int top,
                const PixelRect& clip);

}  // namespace orvane::platform
