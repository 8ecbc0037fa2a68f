#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/raster/Blend.h"
#include "platform/raster/Mask.h"
#include "platform/raster/PixelSource.h"
#include "platform/raster/ShapeCoverage.h"

namespace orvane::platform {

// Where painting is allowed: a rectangle of whole pixels, further restricted by antialiased shapes.
struct Clip {
    PixelRect bounds;
    std::span<const ShapeCoverage> shapes;
};

// Blends colors into a bitmap under a clip.
class BitmapPainter {
public:
    explicit BitmapPainter(const Bitmap& bitmap) : bitmap_(bitmap) {}

    const Bitmap& bitmap() const { return bitmap_; }

    void paint(const ShapeCoverage& shape, std::uint32_t color, const Clip& clip);
    void paint(const ShapeCoverage& shape, const PixelSource& source, const Clip& clip);
    // Paints the whole clip.
    void paint(const PixelSource& source, const Clip& clip);

    // The part of the area of which no shape of the clip removes anything. Whether a pixel is in it
    // does not depend on the area.
    static PixelRect uncutPart(const Clip& clip, const PixelRect& area);
    // Whether a shape of the clip removes part of the area.
    static bool isCutBy(const Clip& clip, const PixelRect& area) {
        return uncutPart(clip, area) != area;
    }

private:
    struct Scratch {
        std::array<std::uint8_t, Mask::kSide * Mask::kSide> coverage;
        std::array<std::uint32_t, Mask::kSide * Mask::kSide> colors;
    };

    template <typename PaintBlock>
    void forEachBlock(const PixelRect& area, const ShapeCoverage* shape, const Clip& clip,
                      PaintBlock paintBlock);
    void paintSource(const PixelRect& area, const ShapeCoverage* shape, const PixelSource& source,
                     const Clip& clip);

    Bitmap bitmap_;
    std::unique_ptr<Scratch> scratch_;
};

}  // namespace orvane::platform
