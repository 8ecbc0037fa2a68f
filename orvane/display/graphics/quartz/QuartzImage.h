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

// An image on the canvas; it has one picture or none. Every loader first drops the old picture. A
// loader that fails leaves nothing to paint, keeps the bounds of the old picture, and does not
// repaint.
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

    // Drops the picture; keeps the bounds and does not repaint.
    void releaseImage();

    // These functions return whether there is a picture now. The first one decodes a PNG or JPEG
    // file, the second one takes pixels as setRawData does.
    bool setDataProvider(const platform::CGDataProvider& provider);
    bool setRawDataProvider(const platform::CGDataProvider& provider, int width, int height);
    // Takes the bounds of the picture and repaints, if there is a picture.
    bool postProcessImage();

    geometry::Rect<double> getBounds() override { return bounds_; }

protected:
    void doValidate(const geometry::Rect<double>& rect) override;

private:
    // These functions return whether there is a picture now. `source` says in the log where bytes
    // that are not a picture come from.
    bool decodeFile(const std::string& path);
    bool decodeAddress(const std::string& address);
    bool decode(const platform::CGDataProvider& provider, const std::string& source);

    std::shared_ptr<const platform::CGImage> image_;
    geometry::Rect<double> bounds_;
};

}  // namespace orvane::display::graphics::quartz
