#include "orvane/display/graphics/quartz/QuartzImage.h"

#include <cstdio>
#include <string_view>

#include "orvane/commons/ByteArray.h"
#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display::graphics::quartz {

using platform::CGDataProvider;
using platform::CGImage;

namespace {

// The caller owns the bytes: pictures are decoded before a loader returns.
std::shared_ptr<const CGDataProvider> providerOver(const void* bytes, std::size_t length) {
    return CGDataProvider::createWithData(
        commons::ByteArray::createFromArray(static_cast<const unsigned char*>(bytes), length));
}

// Logs why bytes that were found are not a picture; the stated message of a loader says less.
// `source` is where they come from.
void logUndecoded(const std::string& source, const CGDataProvider& provider) {
    const std::string_view bytes(reinterpret_cast<const char*>(provider.bytes().data()),
                                 provider.bytes().size());
    const bool isPNG = bytes.starts_with("\x89PNG\r\n\x1a\n");
    const bool isJPEG = bytes.starts_with("\xff\xd8\xff");
    if (isPNG || isJPEG) {
        platform::NSLog("The %s picture in %s is damaged or too large.", isPNG ? "PNG" : "JPEG",
                        source.c_str());
    } else {
        platform::NSLog("There is neither a PNG nor a JPEG picture in %s.", source.c_str());
    }
}

}  // namespace

void QuartzImage::setPath(const std::string& path) {
    releaseImage();
    if (path.starts_with("data:") ? decodeAddress(path) : decodeFile(path)) {
        return;
    }
    std::printf("ERROR: QuartzImage::setPath '%s'. file not found\n", path.c_str());
}

bool QuartzImage::decodeFile(const std::string& path) {
    const auto provider = CGDataProvider::createWithFilename(path);
    return provider && decode(*provider, "'" + path + "'");
}

// The media type is ignored.
bool QuartzImage::decodeAddress(const std::string& address) {
    static constexpr std::string_view kMarker = ";base64,";
    const std::size_t at = address.find(kMarker);
    if (at != address.npos) {
        if (const auto data = QuartzUtils::decodeBase64(address, at + kMarker.size())) {
            return decode(*providerOver(data->bytes(), data->length()), "a data address");
        }
    }
    platform::NSLog("A data address needs \";base64,\" and complete base64 data.");
    return false;
}

void QuartzImage::setContent(const std::string& bytes) {
    releaseImage();
    if (!bytes.empty() && decode(*providerOver(bytes.data(), bytes.size()), "the content")) {
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

bool QuartzImage::decode(const CGDataProvider& provider, const std::string& source) {
    if (setDataProvider(provider)) {
        return true;
    }
    logUndecoded(source, provider);
    return false;
}

bool QuartzImage::setDataProvider(const CGDataProvider& provider) {
    image_ = CGImage::createWithPNGDataProvider(provider);
    if (!image_) {
        image_ = CGImage::createWithJPEGDataProvider(provider);
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
    bounds_ = {0, 0, image_->size().width, image_->size().height};
    invalidate(true);
    return true;
}

void QuartzImage::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (!image_ || canvas == nullptr) {
        return;
    }
    // The y axis of the canvas points down, that of bitmaps up.
    canvas->translateCTM(0, bounds_.height);
    canvas->scaleCTM(1, -1);
    canvas->drawImage(static_cast<platform::CGRect>(bounds_), *image_);
}

}  // namespace orvane::display::graphics::quartz
