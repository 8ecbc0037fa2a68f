#include <cstddef>
#include <cstdint>
#include <string>

#include "orvane/display/DisplayFactory.h"
#include "orvane/display/graphics/Image.h"

// An image's address, behind the "data:" that makes it one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto image = orvane::display::DisplayFactory::createImage();
    image->setPath("data:" + std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
