#include "orvane/driver/comparePictures.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGImage.h"

namespace orvane::driver {

namespace {

// The largest difference of a component, amplified to make it visible.
std::uint32_t differenceOf(std::uint32_t a, std::uint32_t b, int tolerance) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest, std::abs(static_cast<int>((a >> shift) & 0xFF) -
                                             static_cast<int>((b >> shift) & 0xFF)));
    }
    return largest <= tolerance ? 0 : 0xFF000000U | static_cast<std::uint32_t>(64 + largest / 2);
}

std::string sizeOf(const platform::CGImage& picture) {
    return std::to_string(picture.width()) + "x" + std::to_string(picture.height());
}

}  // namespace

std::string comparePictures(const platform::CGImage& picture, const std::string& path,
                            int tolerance) {
    if (std::getenv("ORVANE_WRITE_GOLDEN") != nullptr) {
        return picture.writePNG(path) ? "" : "cannot write " + path;
    }
    const std::string stem = std::filesystem::path(path).stem();
    const std::string actualPath = stem + "-actual.png";
    const auto golden = platform::CGImage::createWithPNGFile(path);
    if (!golden) {
        picture.writePNG(actualPath);
        return "cannot read " + path + "; the picture is in " + actualPath;
    }
    if (golden->width() != picture.width() || golden->height() != picture.height()) {
        picture.writePNG(actualPath);
        return "the picture has " + sizeOf(picture) + " pixels, but " + path + " has " +
               sizeOf(*golden) + "; see " + actualPath;
    }
    std::vector<std::uint32_t> difference;
    difference.reserve(picture.pixels().size());
    std::transform(picture.pixels().begin(), picture.pixels().end(), golden->pixels().begin(),
                   std::back_inserter(difference), [tolerance](std::uint32_t a, std::uint32_t b) {
                       return differenceOf(a, b, tolerance);
                   });
    const auto differing =
        std::ranges::count_if(difference, [](std::uint32_t pixel) { return pixel != 0; });
    if (differing == 0) {
        return {};
    }
    const std::string differencePath = stem + "-difference.png";
    picture.writePNG(actualPath);
    platform::CGImage::createWithPixels(picture.width(), picture.height(), std::move(difference))
        ->writePNG(differencePath);
    return std::to_string(differing) + " pixels differ from " + path + "; see " + actualPath +
           " and " + differencePath;
}

}  // namespace orvane::driver
