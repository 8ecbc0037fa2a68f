#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/imageio/CGImageSource.h"

using namespace orvane::platform;

// The input is a file of any format. A decoder rejects the others at their first bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto provider =
        CGDataProvider::createWithData(orvane::commons::ByteArray::createFromArray(data, size));
    CGImage::createWithPNGDataProvider(*provider);
    CGImage::createWithJPEGDataProvider(*provider);
    const auto source = CGImageSource::create(*provider);
    for (int frame = 0; source && frame < 3; ++frame) {
        source->advance();
        source->image(1);
    }
    return 0;
}
