#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

using namespace orvane::platform;

// The first four bytes are the width and the height; the rest are pixels.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::int16_t sides[2];
    if (size < sizeof sides) {
        return 0;
    }
    std::memcpy(sides, data, sizeof sides);
    const auto provider = CGDataProvider::createWithData(
        orvane::commons::ByteArray::createFromArray(data + sizeof sides, size - sizeof sides));
    CGImage::create(sides[0], sides[1], sides[0] * std::ptrdiff_t{4}, *provider);
    return 0;
}
