#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

using namespace orvane::platform;

// The input is a PNG or JPEG file. A decoder rejects the other format at its first bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto provider =
        CGDataProvider::createWithData(orvane::commons::ByteArray::createFromArray(data, size));
    CGImage::createWithPNGDataProvider(*provider);
    CGImage::createWithJPEGDataProvider(*provider);
    return 0;
}
