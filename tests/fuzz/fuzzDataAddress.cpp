#include <cstddef>
#include <cstdint>
#include <string>

#include "orvane/display/DisplayFactory.h"
#include "orvane/display/graphics/Image.h"

// The input is the rest of a "data:" address of an image.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto image = orvane::display::DisplayFactory::createImage();
    image->setPath("data:" + std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
