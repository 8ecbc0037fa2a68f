#pragma once

#include <memory>
#include <span>

#include "platform/imageio/CGImageSource.h"

typedef struct _RsvgHandle RsvgHandle;

namespace orvane::platform {

// A drawing in SVG. References to other files are not followed.
class SVGSource final : public CGImageSource {
public:
    // Returns null for what is not a drawing.
    static std::shared_ptr<SVGSource> create(std::span<const unsigned char> bytes);
    ~SVGSource() override;

    CGSize size() const override { return size_; }
    bool isScalable() const override { return true; }
    // Renders the drawing if the scale is another one than in the last call.
    std::shared_ptr<const CGImage> image(double scale) override;

private:
    SVGSource(RsvgHandle* handle, CGSize size) : handle_(handle), size_(size) {}

    RsvgHandle* handle_;
    CGSize size_;
    int width_ = 0;
    std::shared_ptr<const CGImage> image_;
};

}  // namespace orvane::platform
