#include "platform/imageio/CGImageSource.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/imageio/GIFSource.h"
#include "platform/imageio/SVGSource.h"
#include "platform/imageio/decodeWebP.h"

namespace orvane::platform {

namespace {

class BitmapImageSource final : public CGImageSource {
public:
    explicit BitmapImageSource(std::shared_ptr<const CGImage> image) : image_(std::move(image)) {}

    CGSize size() const override { return image_->size(); }
    std::shared_ptr<const CGImage> image(double) override { return image_; }

private:
    std::shared_ptr<const CGImage> image_;
};

std::shared_ptr<CGImageSource> sourceOf(std::shared_ptr<const CGImage> image) {
    return image ? std::make_shared<BitmapImageSource>(std::move(image)) : nullptr;
}

// A drawing is text. A compressed one is not accepted: it may expand to any size.
bool isDrawing(std::string_view text) {
    constexpr std::size_t kSearched = 4096;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    text = text.substr(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0, kSearched);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != text.npos && text[first] == '<' && text.find("<svg") != text.npos;
}

}  // namespace

CGImageFormat formatOf(std::span<const unsigned char> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.starts_with("\x89PNG\r\n\x1a\n")) {
        return CGImageFormat::PNG;
    }
    if (text.starts_with("\xff\xd8\xff")) {
        return CGImageFormat::JPEG;
    }
    if (text.starts_with("RIFF") &&
        text.substr(std::min<std::size_t>(8, text.size())).starts_with("WEBP")) {
        return CGImageFormat::WebP;
    }
    if (text.starts_with("GIF87a") || text.starts_with("GIF89a")) {
        return CGImageFormat::GIF;
    }
    return isDrawing(text) ? CGImageFormat::SVG : CGImageFormat::Unknown;
}

const char* nameOf(CGImageFormat format) {
    switch (format) {
        case CGImageFormat::PNG:
            return "PNG";
        case CGImageFormat::JPEG:
            return "JPEG";
        case CGImageFormat::WebP:
            return "WebP";
        case CGImageFormat::GIF:
            return "GIF";
        case CGImageFormat::SVG:
            return "SVG";
        case CGImageFormat::Unknown:
            break;
    }
    return "unknown";
}

std::shared_ptr<CGImageSource> CGImageSource::create(const CGDataProvider& provider) {
    switch (formatOf(provider.bytes())) {
        case CGImageFormat::PNG:
            return sourceOf(CGImage::createWithPNGDataProvider(provider));
        case CGImageFormat::WebP:
            return sourceOf(decodeWebP(provider.bytes()));
        case CGImageFormat::GIF:
            return GIFSource::create(provider.bytes());
        case CGImageFormat::SVG:
            return SVGSource::create(provider.bytes());
        default:
            // The JPEG decoder accepts more than the usual first bytes.
            return sourceOf(CGImage::createWithJPEGDataProvider(provider));
    }
}

}  // namespace orvane::platform
