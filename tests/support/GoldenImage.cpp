#include "tests/support/GoldenImage.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

namespace orvane {

namespace {

std::shared_ptr<const platform::CGImage> readPNG(const std::string& path) {
    const auto bytes = platform::CGDataProvider::createWithFilename(path);
    return bytes ? platform::CGImage::createWithPNGDataProvider(*bytes) : nullptr;
}

// The largest difference of a component, amplified to make it visible.
std::uint32_t differenceOf(std::uint32_t a, std::uint32_t b, int tolerance) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest, std::abs(static_cast<int>((a >> shift) & 0xFF) -
                                             static_cast<int>((b >> shift) & 0xFF)));
    }
    return largest <= tolerance ? 0 : 0xFF000000U | static_cast<std::uint32_t>(64 + largest / 2);
}

}  // namespace

testing::AssertionResult matchesGolden(const platform::CGImage& picture,
                                       const std::string& goldenPath, int tolerance) {
    if (std::getenv("ORVANE_WRITE_GOLDEN") != nullptr) {
        return picture.writePNG(goldenPath)
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "can't write " << goldenPath;
    }
    const std::shared_ptr<const platform::CGImage> golden = readPNG(goldenPath);
    if (!golden) {
        return testing::AssertionFailure() << "can't read " << goldenPath;
    }
    const std::filesystem::path stem = std::filesystem::path(goldenPath).stem();
    const std::string actualPath = stem.string() + "-actual.png";
    if (golden->width() != picture.width() || golden->height() != picture.height()) {
        picture.writePNG(actualPath);
        return testing::AssertionFailure() << "the sizes differ; see " << actualPath;
    }
    std::vector<std::uint32_t> difference;
    difference.reserve(picture.pixels().size());
    std::transform(picture.pixels().begin(), picture.pixels().end(), golden->pixels().begin(),
                   std::back_inserter(difference), [tolerance](std::uint32_t a, std::uint32_t b) {
                       return differenceOf(a, b, tolerance);
                   });
    const auto differing = difference.size() - static_cast<std::size_t>(std::count(
                                                   difference.begin(), difference.end(), 0U));
    if (differing == 0) {
        return testing::AssertionSuccess();
    }
    const std::string differencePath = stem.string() + "-difference.png";
    picture.writePNG(actualPath);
    platform::CGImage::createWithPixels(picture.width(), picture.height(), std::move(difference))
        ->writePNG(differencePath);
    return testing::AssertionFailure() << differing << " pixels differ from " << goldenPath
                                       << "; see " << actualPath << " and " << differencePath;
}

}  // namespace orvane
