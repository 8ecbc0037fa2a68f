#include "orvane/display/graphics/quartz/QuartzImage.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

#include "orvane/commons/ByteArray.h"
#include "orvane/display/graphics/quartz/Color.h"
#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "orvane/display/graphics/quartz/loadPicture.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSLog.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimer.h"

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
    const platform::CGImageFormat format = platform::formatOf(provider.bytes());
    if (format != platform::CGImageFormat::Unknown) {
        platform::NSLog("The %s picture in %s is damaged or too large.", platform::nameOf(format),
                        source.c_str());
    } else {
        platform::NSLog("There is no picture of a known kind in %s.", source.c_str());
    }
}

}  // namespace

QuartzImage::QuartzImage() = default;
QuartzImage::~QuartzImage() = default;

void QuartzImage::setPath(const std::string& path) {
    releaseImage();
    if (settle(path.starts_with("data:") ? decodeAddress(path) : decodeFile(path))) {
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
    if (settle(!bytes.empty() &&
               decode(*providerOver(bytes.data(), bytes.size()), "the content"))) {
        return;
    }
    std::printf("ERROR: QuartzImage::setContent image is not created with content of %ld bytes\n",
                static_cast<long>(bytes.size()));
}

void QuartzImage::setRawData(const std::string& bytes, int width, int height) {
    releaseImage();
    if (settle(!bytes.empty() &&
               setRawDataProvider(*providerOver(bytes.data(), bytes.size()), width, height))) {
        return;
    }
    std::printf("ERROR: QuartzImage::setRawData image is not created with content of %ld bytes\n",
                static_cast<long>(bytes.size()));
}

void QuartzImage::releaseImage() {
    image_.reset();
    tinted_.reset();
    source_.reset();
    frameTimer_.reset();
}

bool QuartzImage::settle(bool isLoaded) {
    ++loads_;
    state_ = isLoaded ? ImageState::Loaded : ImageState::Failed;
    return isLoaded;
}

void QuartzImage::load(const std::string& address) {
    state_ = ImageState::Pending;
    const std::weak_ptr<DisplayObject> self = shared_from_this();
    loadPicture(address, [self, load = ++loads_](std::shared_ptr<platform::CGImageSource> source) {
        if (const auto image = std::dynamic_pointer_cast<QuartzImage>(self.lock())) {
            image->finishLoad(load, std::move(source));
        }
    });
}

void QuartzImage::finishLoad(unsigned load, std::shared_ptr<platform::CGImageSource> source) {
    if (load != loads_) {
        return;  // another loader was called meanwhile
    }
    if (source) {
        releaseImage();
    }
    settle(source && setSource(std::move(source)));
    notify(ImageStateEvent{state_});
}

bool QuartzImage::setSource(std::shared_ptr<platform::CGImageSource> source) {
    image_ = source->image(1);
    if (source->isScalable() || source->delay()) {
        source_ = std::move(source);
    }
    return postProcessImage();
}

void QuartzImage::setPlaying(bool playing) {
    if (isPlaying_ != playing) {
        isPlaying_ = playing;
        frameTimer_.reset();
        frameEnd_ = 0;
        invalidate(true);
    }
}

// Called when a frame is painted: a picture that is not visible does not play.
void QuartzImage::scheduleFrame() {
    const std::optional<double> delay =
        isPlaying_ && source_ && !frameTimer_ ? source_->delay() : std::nullopt;
    if (!delay) {
        return;
    }
    // On time, as long as painting keeps up.
    const double now = platform::CACurrentMediaTime();
    frameEnd_ = std::max(frameEnd_ + *delay, now);
    if (frameEnd_ > now + *delay || frameEnd_ == now) {
        frameEnd_ = now + *delay;
    }
    frameTimer_ = std::make_unique<platform::CATimer>();
    frameTimer_->start(frameEnd_, 0, [this] {
        const auto over = std::move(frameTimer_);  // this function is in it
        source_->advance();
        image_ = source_->image(1);
        tinted_.reset();
        invalidate(true);
    });
}

void QuartzImage::setTint(unsigned argb) {
    tint_ = argb;
    tinted_.reset();
    invalidate(true);
}

bool QuartzImage::decode(const CGDataProvider& provider, const std::string& source) {
    if (setDataProvider(provider)) {
        return true;
    }
    logUndecoded(source, provider);
    return false;
}

bool QuartzImage::setDataProvider(const CGDataProvider& provider) {
    auto source = platform::CGImageSource::create(provider);
    return source && setSource(std::move(source));
}

bool QuartzImage::setRawDataProvider(const CGDataProvider& provider, int width, int height) {
    image_ = CGImage::create(width, height, std::ptrdiff_t{width} * 4, provider);
    return postProcessImage();
}

bool QuartzImage::postProcessImage() {
    if (!image_) {
        return false;
    }
    const platform::CGSize size = source_ ? source_->size() : image_->size();
    bounds_ = {0, 0, size.width, size.height};
    invalidate(true);
    return true;
}

void QuartzImage::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (!image_ || canvas == nullptr) {
        return;
    }
    scheduleFrame();
    if (source_ && source_->isScalable()) {
        const platform::CGSize scale = canvas->unitsInDevicePixels();
        std::shared_ptr<const CGImage> rendered =
            source_->image(std::max(scale.width, scale.height));
        if (rendered != image_) {
            image_ = std::move(rendered);
            tinted_.reset();
        }
    }
    // The y axis of the canvas points down, that of bitmaps up.
    canvas->translateCTM(0, bounds_.height);
    canvas->scaleCTM(1, -1);
    const bool isTinted = tint_ >> 24 != 0;
    if (isTinted && !tinted_) {
        const Color color = Color::fromArgb(tint_);
        tinted_ = image_->createTinted({color.r, color.g, color.b, color.a});
    }
    canvas->drawImage(static_cast<platform::CGRect>(bounds_), isTinted ? *tinted_ : *image_);
}

}  // namespace orvane::display::graphics::quartz
