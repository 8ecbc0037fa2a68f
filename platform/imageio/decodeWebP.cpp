#include "platform/imageio/decodeWebP.h"

#include <webp/decode.h>

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"
#include "platform/foundation/LibraryFunctions.h"

namespace orvane::platform {

namespace {

struct WebPLibrary {
    decltype(&::WebPGetInfo) getInfo;
    // Straight words in the byte order of the machine.
    decltype(&::WebPDecodeBGRAInto) decodeInto;

    static const WebPLibrary* instance() {
        static const WebPLibrary* const library = open();
        return library;
    }

private:
    static const WebPLibrary* open() {
        static WebPLibrary library;
        LibraryFunctions functions("libwebp.so.7", "No WebP picture can be shown");
        functions.find(library.getInfo, "WebPGetInfo");
        functions.find(library.decodeInto, std::endian::native == std::endian::little
                                               ? "WebPDecodeBGRAInto"
                                               : "WebPDecodeARGBInto");
        return functions.isComplete() ? &library : nullptr;
    }
};

}  // namespace

std::shared_ptr<const CGImage> decodeWebP(std::span<const unsigned char> bytes) {
    const WebPLibrary* const webp = WebPLibrary::instance();
    int width = 0;
    int height = 0;
    if (webp == nullptr || webp->getInfo(bytes.data(), bytes.size(), &width, &height) == 0) {
        return nullptr;
    }
    if (!isSensibleImageSize(width, height)) {
        reportTooLarge(width, height);
        return nullptr;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    if (webp->decodeInto(bytes.data(), bytes.size(), reinterpret_cast<std::uint8_t*>(pixels.data()),
                         pixels.size() * 4, width * 4) == nullptr) {
        return nullptr;
    }
    for (std::uint32_t& p : pixels) {
        p = premultiplied(p >> 16 & 255, p >> 8 & 255, p & 255, p >> 24);
    }
    return CGImage::createWithPixels(width, height, std::move(pixels));
}

}  // namespace orvane::platform
