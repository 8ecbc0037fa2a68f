#pragma once

#include <memory>
#include <string>

#include "orvane/display/graphics/Image.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"

namespace orvane::platform {
class CGDataProvider;
class CGImage;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// An image has no picture or exactly one. Every loader drops the old one first; one that fails
// leaves nothing to paint, the bounds of the old bitmap, and no repaint.
class QuartzImage : public virtual Image, public virtual QuartzDrawable {
public:
    std::string getDescription() const override { return "QuartzImage"; }

    void set(float, float, float, float) override {}
    void setX(float) override {}
    void setY(float) override {}
    void setWidth(float) override {}
    void setHeight(float) override {}

    void setPath(const std::string& path) override;
    void setContent(const std::string& bytes) override;
    void setRawData(const std::string& bytes, int width, int height) override;

    void releaseImage();

    geometry::Rect<double> getBounds() override { return bounds_; }

protected:
    void doValidate(const geometry::Rect<double>& rect) override;

private:
    // True when there is a picture now. A null provider has none.
    bool setDataProvider(const platform::CGDataProvider* provider);
    bool setRawDataProvider(const platform::CGDataProvider& provider, int width, int height);
    bool postProcessImage();

    std::shared_ptr<const platform::CGImage> image_;
    geometry::Rect<double> bounds_;
};

}  // namespace orvane::display::graphics::quartz
