#pragma once

#include <memory>
#include <string>

#include "orvane/display/graphics/Image.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"

namespace orvane::platform {
class CATimer;
class CGDataProvider;
class CGImage;
class CGImageSource;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// An image on the canvas; it has one picture or none. Every loader first drops the old picture. A
// loader that fails leaves nothing to paint, keeps the bounds of the old picture, and does not
// repaint.
class QuartzImage : public virtual Image, public virtual QuartzDrawable {
public:
    QuartzImage();
    ~QuartzImage() override;

    std::string getDescription() const override { return "QuartzImage"; }

    void set(float, float, float, float) override {}
    void setX(float) override {}
    void setY(float) override {}
    void setWidth(float) override {}
    void setHeight(float) override {}

    void setPath(const std::string& path) override;
    void setContent(const std::string& bytes) override;
    void setRawData(const std::string& bytes, int width, int height) override;

    void load(const std::string& address) override;
    ImageState getState() const override { return state_; }
    void setPlaying(bool playing) override;
    bool isPlaying() const override { return isPlaying_; }

    void setTint(unsigned argb) override;
    unsigned getTint() const override { return tint_; }

    // Drops the picture; keeps the bounds and does not repaint.
    void releaseImage();

    // These functions return whether there is a picture now. The first one decodes a file, the
    // second one takes pixels as setRawData does.
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
    bool setSource(std::shared_ptr<platform::CGImageSource> source);
    // Ends a loader.
    bool settle(bool isLoaded);
    void finishLoad(unsigned load, std::shared_ptr<platform::CGImageSource> source);
    void scheduleFrame();

    std::shared_ptr<const platform::CGImage> image_;
    // Of a picture with frames, or of a drawing; null for others.
    std::shared_ptr<platform::CGImageSource> source_;
    std::unique_ptr<platform::CATimer> frameTimer_;
    double frameEnd_ = 0;  // media time
    bool isPlaying_ = true;
    ImageState state_ = ImageState::Empty;
    unsigned loads_ = 0;  // the number of loaders that were called
    // The picture in the color of the tint; made when it is painted first.
    std::shared_ptr<const platform::CGImage> tinted_;
    unsigned tint_ = 0;
    geometry::Rect<double> bounds_;
};

}  // namespace orvane::display::graphics::quartz
