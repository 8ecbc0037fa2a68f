#pragma once

#include <memory>
#include <span>
#include <vector>

#include "platform/imageio/CGImageSource.h"

namespace orvane::platform {

struct SVGRendering;

// A drawing in SVG. References to other files are not followed.
class SVGSource final : public CGImageSource {
public:
    // Returns null for what is not a drawing.
    static std::shared_ptr<SVGSource> create(std::span<const unsigned char> bytes);

    CGSize size() const override { return size_; }
    bool isScalable() const override { return true; }
    // Renders the drawing if another number of pixels is wanted than in the last call. If that
    // fails, the drawing stays as it was rendered last.
    std::shared_ptr<const CGImage> image(double scale) override;

private:
    SVGSource(std::span<const unsigned char> bytes, SVGRendering rendering);

    std::vector<unsigned char> bytes_;  // Empty when the drawing is not rendered again.
    CGSize size_;
    std::shared_ptr<const CGImage> image_;
};

}  // namespace orvane::platform
