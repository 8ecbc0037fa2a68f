#include "PhotoCard.h"

#include "look.h"

namespace travel {

using namespace orvane::display;
using namespace orvane::display::layout;
using namespace orvane::services;

namespace {

// Both pictures, in points.
constexpr double kWidth = 164;
constexpr double kHeight = 123;

}  // namespace

PhotoCard::PhotoCard() : state_(makeText("The camera is off", 12, kCaption)) {
    box_ = std::make_shared<Box>(
        BoxStyle{.direction = Direction::Column, .gap = 12, .padding = Insets::all(14)});
    box_->setBackground(makeBack(kCard, 12));
    const auto pictures = std::make_shared<Box>(BoxStyle{.gap = 16});
    preview_->setScaling(native::NVideoCaptureView::Scaling::Fill);
    pictures->add(preview_, {.width = kWidth, .height = kHeight});
    pictures->add(photo_, {.width = kWidth, .height = kHeight});
    box_->add(pictures);
    const auto controls = std::make_shared<Box>(BoxStyle{.gap = 16, .align = Align::Center});
    controls->add(makeButton("Photo", listeners_, [this] { press(); }),
                  {.width = 130, .height = 36});
    controls->add(state_);
    box_->add(controls);
}

void PhotoCard::press() {
    const auto& camera = preview_->getSession();
    if (!camera || !camera->isRunning()) {
        open();
        return;
    }
    camera->takePhoto(
        [this](const std::string& jpeg) {
            photo_->setContent(jpeg);
            box_->update();  // scales the photo to its place
        },
        [this](const ServiceFailure& failure) { explain(failure); });
}

void PhotoCard::open() {
    state_->setContent("Opening the camera ...");
    preview_->setSession(CameraService::instance()->start(
        {.width = 640, .height = 480},
        [this](const CameraFormat& format) {
            state_->setContent(std::to_string(format.width) + " x " +
                               std::to_string(format.height));
        },
        [this](const ServiceFailure& failure) { explain(failure); }));
}

void PhotoCard::explain(const ServiceFailure& failure) {
    state_->setContent(describeFailure(failure));
}

}  // namespace travel
