#include "tests/golden/compareWithGolden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "orvane/display/CurrentCanvas.h"
#include "orvane/display/DisplayObject.h"
#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

namespace orvane::display {

using platform::CGBitmapContext;
using platform::CGDataProvider;
using platform::CGImage;

namespace {

std::shared_ptr<const CGImage> paint(int width, int height, DisplayObject& object) {
    CGBitmapContext canvas(width, height);
    canvas.setRGBFillColor(1, 1, 1, 1);
    canvas.addRect({{0, 0}, {double(width), double(height)}});
    canvas.drawPath(platform::CGPathDrawingMode::Fill);
    SetCurrentCanvas(&canvas);
    object.validate({0, 0, double(width), double(height)});
    SetCurrentCanvas(nullptr);
    return canvas.createImage();
}

std::shared_ptr<const CGImage> read(const std::string& file) {
    const auto provider = CGDataProvider::createWithFilename(file);
    return provider ? CGImage::createWithPNGDataProvider(*provider) : nullptr;
}

// The differing pixels in red, on a faint copy of the golden picture.
std::vector<std::uint32_t> difference(const CGImage& golden, const CGImage& picture) {
    std::vector<std::uint32_t> pixels(golden.pixels().size());
    std::transform(golden.pixels().begin(), golden.pixels().end(), picture.pixels().begin(),
                   pixels.begin(), [](std::uint32_t expected, std::uint32_t actual) {
                       const std::uint32_t faint =
                           0xff000000 | 0xc0c0c0 | (expected >> 2 & 0x3f3f3f);
                       return expected == actual ? faint : 0xffff0000;
                   });
    return pixels;
}

}  // namespace

void compareWithGolden(const std::string& name, int width, int height,
                       const std::shared_ptr<DisplayObject>& object) {
    const std::string file = std::string(ORVANE_GOLDEN_IMAGES) + "/" + name + ".png";
    const auto picture = paint(width, height, *object);
    if (const char* const update = std::getenv("ORVANE_UPDATE_GOLDEN"); update && *update == '1') {
        ASSERT_TRUE(picture->writePNG(file));
    }
    const auto golden = read(file);
    const std::filesystem::path out(ORVANE_GOLDEN_RESULTS);
    const std::string actual = out / (name + ".png");
    const std::string differing = out / (name + "-difference.png");
    std::filesystem::create_directories(out);
    const bool sameSize =
        golden && golden->width() == picture->width() && golden->height() == picture->height();
    if (!sameSize) {
        picture->writePNG(actual);
        FAIL() << file << " is missing or of another size; the picture is " << actual;
    }
    if (!std::ranges::equal(golden->pixels(), picture->pixels())) {
        picture->writePNG(actual);
        CGImage::createWithPixels(width, height, difference(*golden, *picture))
            ->writePNG(differing);
        FAIL() << "The picture is " << actual << ", what differs " << differing;
    }
}

}  // namespace orvane::display
