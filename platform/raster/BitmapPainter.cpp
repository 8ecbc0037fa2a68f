#include "platform/raster/BitmapPainter.h"

#include <algorithm>

namespace orvane::platform {

PixelRect BitmapPainter::uncutPart(const Clip& clip, const PixelRect& area) {
    PixelRect result = area;
    for (const ShapeCoverage& shape : clip.shapes) {
        result = result.intersected(shape.covered());
    }
    return result;
}

void BitmapPainter::paint(const ShapeCoverage& shape, std::uint32_t color, const Clip& clip) {
    const PixelRect area = clip.bounds.intersected(shape.bounds());
    if (area.isEmpty() || color == 0) {
        return;
    }
    if (!isCutBy(clip, area)) {
        shape.paint(bitmap_, area, color);
        return;
    }
    forEachBlock(area, &shape, clip, [&](const PixelRect& block, const std::uint8_t* coverage) {
        for (int y = block.top; y < block.bottom; ++y, coverage += Mask::kSide) {
            blendCoverage(bitmap_.at(block.left, y), coverage, block.width(), color);
        }
    });
}

void BitmapPainter::paint(const ShapeCoverage& shape, const PixelSource& source, const Clip& clip) {
    paintSource(clip.bounds.intersected(shape.bounds()), &shape, source, clip);
}

void BitmapPainter::paint(const PixelSource& source, const Clip& clip) {
    paintSource(clip.bounds, nullptr, source, clip);
}

void BitmapPainter::paintSource(const PixelRect& area, const ShapeCoverage* shape,
                                const PixelSource& source, const Clip& clip) {
    forEachBlock(area, shape, clip, [&](const PixelRect& block, const std::uint8_t* coverage) {
        const std::uint32_t* colors = scratch_->colors.data();
        source.fetch(block, scratch_->colors.data());
        for (int y = block.top; y < block.bottom; ++y) {
            blendColors(bitmap_.at(block.left, y), colors, coverage, block.width());
            colors += Mask::kSide;
            coverage += Mask::kSide;
        }
    });
}

// Divides the area into blocks of the size of the scratch memory and computes the coverage of each
// by the clip and, unless it is null, by the shape.
template <typename PaintBlock>
void BitmapPainter::forEachBlock(const PixelRect& area, const ShapeCoverage* shape,
                                 const Clip& clip, PaintBlock paintBlock) {
    if (area.isEmpty()) {
        return;
    }
    if (!scratch_) {
        scratch_ = std::make_unique<Scratch>();
    }
    std::uint8_t* const coverage = scratch_->coverage.data();
    for (int top = area.top; top < area.bottom; top += Mask::kSide) {
        for (int left = area.left; left < area.right; left += Mask::kSide) {
            const PixelRect block =
                area.intersected({left, top, left + Mask::kSide, top + Mask::kSide});
            for (int y = 0; y < block.height(); ++y) {
                std::fill_n(coverage + y * Mask::kSide, block.width(), std::uint8_t{255});
            }
            if (shape != nullptr) {
                shape->multiply(coverage, block);
            }
            for (const ShapeCoverage& cut : clip.shapes) {
                if (!cut.covers(block)) {
                    cut.multiply(coverage, block);
                }
            }
            paintBlock(block, coverage);
        }
    }
}

}  // namespace orvane::platform
