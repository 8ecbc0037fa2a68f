// A picture, a title, and a button that counts how often it was pressed.
#include <orvane/orvane.h>

#include <algorithm>
#include <memory>
#include <string>

using namespace orvane::display;

namespace {

constexpr double kWidth = 320;
constexpr double kHeight = 300;

// Calls press() of its owner when a press on the object ends.
template <typename Owner>
class Button : public events::TouchEventListener {
public:
    explicit Button(Owner& owner) : owner_(owner) {}

    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>&,
                                               const events::TouchEvent& event) override {
        switch (event.phase) {
            case events::TouchEventPhase::Began:
                return events::TouchEventListenerState::Began;
            case events::TouchEventPhase::Moved:
                return events::TouchEventListenerState::Changed;
            case events::TouchEventPhase::Ended:
                owner_.press();
                break;
            case events::TouchEventPhase::Cancelled:
                break;
        }
        return events::TouchEventListenerState::Ended;
    }

private:
    Owner& owner_;
};

// Calls layOut() of its owner when the display has another size.
template <typename Owner>
class Resize : public FrameChangedEvent::listener_type {
public:
    explicit Resize(Owner& owner) : owner_(owner) {}

    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent&) override {
        owner_.layOut();
    }

private:
    Owner& owner_;
};

std::shared_ptr<graphics::Text> createLine(float y, float size, unsigned color) {
    const auto line = DisplayFactory::createText(false);
    line->setFont("DejaVu Sans");
    line->setTextSize(size);
    line->setFillColor(color);
    line->setTextAlign(graphics::TextAlign::Center);
    line->setX(static_cast<float>(kWidth / 2));
    line->setY(y);
    return line;
}

}  // namespace

class Main {
public:
    void main() {
        const auto picture = DisplayFactory::createImage();
        picture->setPath(orvane::system::getResourceDirectory() + "/images/icon.png");
        picture->setTranslate(static_cast<float>(kWidth - picture->getBounds().width) / 2, 0);
        content_->add(picture);

        const auto title = createLine(176, 26, 0xFFF1EEE8);
        title->setContent("@NAME@");
        content_->add(title);

        const auto button = DisplayFactory::createContainer();
        const auto shape = DisplayFactory::createRect();
        shape->set(0, 220, static_cast<float>(kWidth), 56);
        shape->setRx(12);
        shape->setRy(12);
        shape->setFillColor(0xFFF2545B);
        button->add(shape);
        button->add(count_);
        button->addListener<events::TouchEvent>(pressed_);
        // What a screen reader says; tests find the button by it, too.
        button->getOrCreateAccessibilityElement()->setLabel("Press");
        content_->add(button);
        showCount();

        layOut();
        Display::instance()->addListener<FrameChangedEvent>(resized_);
        Display::instance()->add(content_);
    }

    void press() {
        ++presses_;
        showCount();
    }

    // Centers the content.
    void layOut() {
        const auto size = Display::instance()->getScreenSize();
        content_->setTranslate(static_cast<float>(std::max(0.0, (size.width - kWidth) / 2)),
                               static_cast<float>(std::max(0.0, (size.height - kHeight) / 2)));
    }

private:
    void showCount() {
        count_->setContent(presses_ == 0 ? "Press me"
                                         : "Pressed " + std::to_string(presses_) +
                                               (presses_ == 1 ? " time" : " times"));
    }

    // Objects hold their listeners weakly: the application owns them.
    std::shared_ptr<Button<Main>> pressed_ = std::make_shared<Button<Main>>(*this);
    std::shared_ptr<Resize<Main>> resized_ = std::make_shared<Resize<Main>>(*this);
    std::shared_ptr<graphics::Container> content_ = DisplayFactory::createContainer();
    std::shared_ptr<graphics::Text> count_ = createLine(255, 18, 0xFFFFFFFF);
    int presses_ = 0;
};

ORVANE_MAIN_CLASS(Main)
