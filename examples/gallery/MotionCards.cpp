#include "MotionCards.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "NativeField.h"
#include "Palette.h"

namespace gallery {

using namespace orvane::display;

namespace {

class ChangeOver : public events::TouchEventListener {
public:
    explicit ChangeOver(std::vector<std::shared_ptr<DisplayObject>> dots)
        : dots_(std::move(dots)) {}

    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>& object,
                                               const events::TouchEvent& event) override {
        using events::TouchEventListenerState;
        if (event.phase != events::TouchEventPhase::Began) {
            return TouchEventListenerState::Ended;
        }
        evenShown_ = !evenShown_;
        const UpdateLock lock(object);  // all dots in one update
        for (std::size_t i = 0; i < dots_.size(); ++i) {
            dots_[i]->setVisible((i % 2 == 0) == evenShown_);
        }
        return TouchEventListenerState::Began;
    }

private:
    std::vector<std::shared_ptr<DisplayObject>> dots_;
    bool evenShown_ = true;
};

}  // namespace

std::shared_ptr<events::TouchEventListener> drawHiddenAndShown(ContainerObject& inside) {
    constexpr int kDots = 16;
    std::vector<std::shared_ptr<DisplayObject>> dots;
    const auto ring = DisplayFactory::createContainer();
    inside.add(ring);
    for (int i = 0; i < kDots; ++i) {
        const double angle = 2 * std::numbers::pi * i / kDots;
        const auto dot = DisplayFactory::createCircle();
        dot->set(static_cast<float>(124.5 + 70 * std::cos(angle)),
                 static_cast<float>(109 + 70 * std::sin(angle)), 13);
        paint(dot, i % 2 == 0 ? palette::kTeal : palette::kAmber);
        dot->setVisible(i % 2 == 0);
        ring->add(dot);
        dots.push_back(dot);
    }
    const auto button = DisplayFactory::createCircle();
    button->set(107.5F, 92, 30);
    paint(button, palette::kInk);
    inside.add(button);
    auto listener = std::make_shared<ChangeOver>(std::move(dots));
    inside.addListener<events::TouchEvent>(listener);
    return listener;
}

void drawNative(ContainerObject& inside, const std::shared_ptr<Drag>& drag) {
    const auto behind = DisplayFactory::createCircle();
    behind->set(40, 62, 58);
    paint(behind, palette::kViolet);
    behind->addListener<events::TouchEvent>(drag);
    inside.add(behind);

    inside.add(NativeField::create({62, 100, 156, 36}, "A native text field"));

    const auto front = DisplayFactory::createCircle();
    front->set(168, 84, 32);
    paint(front, 0xCCF5A623, palette::kInk, 2);
    front->addListener<events::TouchEvent>(drag);
    inside.add(front);
}

void drawDraggables(ContainerObject& inside, const std::shared_ptr<Drag>& drag) {
    const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kGreen,
                               palette::kTeal,  palette::kBlue,  palette::kViolet};
    for (int i = 0; i < 6; ++i) {
        const auto chip = DisplayFactory::createContainer();
        chip->setTranslate(44 + 66.0F * static_cast<float>(i % 3),
                           62 + 72.0F * static_cast<float>(i / 3));
        const auto shadow = DisplayFactory::createRect();
        shadow->set(3, 4, 54, 54);
        shadow->setRx(16);
        shadow->setRy(16);
        paint(shadow, 0x22000000);
        chip->add(shadow);
        const auto face = DisplayFactory::createRect();
        face->set(0, 0, 54, 54);
        face->setRx(16);
        face->setRy(16);
        paint(face, colors[i]);
        chip->add(face);
        for (int dot = 0; dot <= i; ++dot) {
            const auto pip = DisplayFactory::createCircle();
            const float column = static_cast<float>(dot % 2);
            const float row = static_cast<float>(dot / 2);
            pip->set(16 + 14 * column, 9 + 14 * row, 4);
            paint(pip, palette::kWhite);
            chip->add(pip);
        }
        chip->addListener<events::TouchEvent>(drag);
        inside.add(chip);
    }
}

}  // namespace gallery
