#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

using namespace orvane::platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CGImage::createWithPNGDataProvider(
        *CGDataProvider::createWithData(orvane::commons::ByteArray::createFromArray(data, size)));
    return 0;
}
