#include <fstream>
#include <iterator>

#include "Cards.h"
#include "Palette.h"

namespace gallery {

namespace {

std::string pathOf(const std::string& name) {
    return orvane::system::getResourceDirectory() + "/res/images/" + name;
}

std::string bytesOf(const std::string& name) {
    std::ifstream file(pathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Eight by eight pixels.
constexpr const char* kCheckers =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAgAAAAICAIAAABLbSncAAAAMElEQVR42mP4FBItuXwBhPy6TF"
    "k//x6EZICLAkm4KJBkIF0Hsipk3QzIqpB1k64DAPbyY7GTyXoBAAAAAElFTkSuQmCC";

}  // namespace

void drawJpeg(ContainerObject& inside) {
    const auto image = DisplayFactory::createImage();
    image->setPath(pathOf("landscape.jpg"));
    image->setTranslate(27, 52);
    inside.add(image);
}

void drawPng(ContainerObject& inside) {
    // The background of the image is transparent: the stripes are visible behind it.
    for (int i = 0; i < 6; ++i) {
        const auto stripe = DisplayFactory::createRect();
        stripe->set(28, 46 + 28.0F * static_cast<float>(i), 219, 14);
        paint(stripe, 0x33F5A623);
        inside.add(stripe);
    }
    const auto image = DisplayFactory::createImage();
    image->setContent(bytesOf("face.png"));
    image->setTranslate(77, 64);
    inside.add(image);
}

void drawRawPixels(ContainerObject& inside) {
    constexpr int kSide = 128;
    std::string pixels;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            for (const int component : {2 * x, 2 * y, (x ^ y) & 255, 255}) {
                pixels.push_back(static_cast<char>(component));
            }
        }
    }
    const auto image = DisplayFactory::createImage();
    image->setRawData(pixels, kSide, kSide);
    image->setTranslate(73, 62);
    inside.add(image);
}

void drawDataAddress(ContainerObject& inside) {
    const auto image = DisplayFactory::createImage();
    image->setPath(kCheckers);
    image->translate(73, 62);
    image->scale(16, 16);
    inside.add(image);
}

void drawTurnedImage(ContainerObject& inside) {
    const auto image = DisplayFactory::createImage();
    image->setPath(pathOf("landscape.jpg"));
    turn(*image, -14, 137, 126);
    image->translate(60, 74);
    image->scale(0.7F, 0.7F);
    inside.add(image);
}

void drawClippedImage(ContainerObject& inside) {
    const auto window = DisplayFactory::createClipContainer(false);
    window->setBounds({57, 60, 160, 124});
    inside.add(window);
    const auto image = DisplayFactory::createImage();
    image->setPath(pathOf("landscape.jpg"));
    image->setTranslate(24, 36);
    window->add(image);
}

void drawDrawing(ContainerObject& inside) {
    // The same drawing at three sizes, each rendered for its own, and a picture in a single color.
    const float scales[] = {0.3F, 0.5F, 0.9F};
    float x = 22;
    for (const float scale : scales) {
        const auto drawing = DisplayFactory::createImage();
        drawing->setPath(pathOf("emblem.svg"));
        drawing->translate(x, 190 - 120 * scale);
        drawing->scale(scale, scale);
        inside.add(drawing);
        x += 120 * scale + 10;
    }
    const auto tinted = DisplayFactory::createImage();
    tinted->setPath(pathOf("face.png"));
    tinted->setTint(palette::kViolet);
    tinted->translate(36, 56);
    tinted->scale(0.5F, 0.5F);
    inside.add(tinted);
}

void drawFrames(ContainerObject& inside) {
    const auto dial = DisplayFactory::createImage();
    dial->setPath(pathOf("dial.gif"));
    dial->setTranslate(89, 78);
    Look::instance().follow(dial, [](orvane::display::graphics::Image& image) {
        image.setPlaying(!Look::instance().appearance().reducesMotion);
    });
    inside.add(dial);
}

void drawLoaded(ContainerObject& inside) {
    // It is shown when a background thread has decoded it.
    const auto image = DisplayFactory::createImage();
    image->load(pathOf("aurora.webp"));
    image->setTranslate(27, 52);
    inside.add(image);
}

void drawImageIcon(ContainerObject& inside) {
    const auto frame = DisplayFactory::createRect();
    frame->set(0, 2, 24, 20);
    frame->setRx(3);
    frame->setRy(3);
    paint(frame, palette::kWhite);
    inside.add(frame);
    const auto hill = DisplayFactory::createPolyline();
    hill->set({3, 19, 10, 9, 14, 14, 17, 11, 21, 19}, true);
    paint(hill, palette::kTeal);
    inside.add(hill);
}

}  // namespace gallery
