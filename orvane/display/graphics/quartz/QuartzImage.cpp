#include "orvane/display/graphics/quartz/QuartzImage.h"

#include <cstdio>

#include "orvane/commons/ByteArray.h"
#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/foundation/NSData.h"

namespace orvane::display::graphics::quartz {

using platform::CGDataProvider;
using platform::CGImage;

namespace {

// Over bytes that the caller keeps: pictures are decoded before the loader returns.
std::shared_ptr<const CGDataProvider> providerOver(const void* bytes, std::size_t length) {
    return CGDataProvider::createWithData(
        commons::ByteArray::createFromArray(static_cast<const unsigned char*>(bytes), length));
}

}  // namespace

void QuartzImage::setPath(const std::string& path) {
    releaseImage();
    bool loaded = false;
    if (path.starts_with("data:")) {
        // Whatever type the address states is passed over, and one that is not base64 is reported
        // like a file that is missing.
        static constexpr std::string_view marker = ";base64,";
        const std::size_t at = path.find(marker);
        if (at != path.npos) {
            if (const auto data = QuartzUtils::decodeBase64(path, at + marker.size())) {
                loaded = setDataProvider(providerOver(data->bytes(), data->length()).get());
            }
        }
    } else {
        loaded = setDataProvider(CGDataProvider::createWithFilename(path).get());
    }
    if (!loaded) {
        std::printf("ERROR: QuartzImage::setPath '%s'. file not found\n", path.c_str());
    }
}

void QuartzImage::setContent(const std::string& bytes) {
    releaseImage();
    if (!bytes.empty() && setDataProvider(providerOver(bytes.data(), bytes.size()).get())) {
        return;
    }
    std::printf("ERROR: QuartzImage::setContent image is not created with content of %ld bytes\n",
                static_cast<long>(bytes.size()));
}

void QuartzImage::setRawData(const std::string& bytes, int width, int height) {
    releaseImage();
    if (!bytes.empty() &&
        setRawDataProvider(*providerOver(bytes.data(), bytes.size()), width, height)) {
        return;
    }
    std::printf("ERROR: QuartzImage::setRawData image is not created with content of %ld bytes\n",
                static_cast<long>(bytes.size()));
}

void QuartzImage::releaseImage() {
    image_.reset();
}

bool QuartzImage::setDataProvider(const CGDataProvider* provider) {
    if (provider == nullptr) {
        return false;
    }
    image_ = CGImage::createWithPNGDataProvider(*provider);
    if (!image_) {
        image_ = CGImage::createWithJPEGDataProvider(*provider);
    }
    return postProcessImage();
}

bool QuartzImage::setRawDataProvider(const CGDataProvider& provider, int width, int height) {
    image_ = CGImage::create(width, height, std::ptrdiff_t{width} * 4, provider);
    return postProcessImage();
}

bool QuartzImage::postProcessImage() {
    if (!image_) {
        return false;
    }
    bounds_ = {0, 0, static_cast<double>(image_->width()), static_cast<double>(image_->height())};
    invalidate(true);
    return true;
}

void QuartzImage::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (!image_ || canvas == nullptr) {
        return;
    }
    // The canvas has its y axis down, bitmaps have theirs up.
    canvas->translateCTM(0, bounds_.height);
    canvas->scaleCTM(1, -1);
    canvas->drawImage(static_cast<platform::CGRect>(bounds_), *image_);
}

}  // namespace orvane::display::graphics::quartz
