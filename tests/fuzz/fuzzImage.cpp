#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

using namespace orvane::platform;

// A PNG or a JPEG: whichever it begins like is decoded beyond its first bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto provider =
        CGDataProvider::createWithData(orvane::commons::ByteArray::createFromArray(data, size));
    CGImage::createWithPNGDataProvider(*provider);
    CGImage::createWithJPEGDataProvider(*provider);
    return 0;
}
