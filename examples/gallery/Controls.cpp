#include "Controls.h"

#include <algorithm>
#include <utility>

namespace gallery {

using namespace orvane::display;

namespace {

constexpr float kSwitchWidth = 40;
constexpr float kSwitchHeight = 24;

std::shared_ptr<graphics::Rect> makeRect(const Controls::Rect& bounds, float radius) {
    auto rect = DisplayFactory::createRect();
    rect->set(bounds.x, bounds.y, bounds.width, bounds.height);
    rect->setRx(radius);
    rect->setRy(radius);
    return rect;
}

}  // namespace

Controls::Controls(Container page) : page_(std::move(page)) {
    listeners_.add<events::DisplayKeyEvent>(
        *Display::instance(), [this](const events::KeyEvent& event) { return focusNext(event); });
}

void Controls::addButton(ContainerObject& inside, const Rect& bounds, const std::string& label,
                         const Action& pressed, bool isMain) {
    const auto button = DisplayFactory::createContainer();
    button->setTranslate(bounds.x, bounds.y);
    const Rect area{0, 0, bounds.width, bounds.height};
    const auto face = makeRect(area, 10);
    paint(face, isMain ? palette::kAccent : Color{0xFFECE8E0, 0xFF363C45});
    button->add(face);
    const auto text = addText(*button, bounds.width / 2, bounds.height / 2 + 5, label, 13,
                              isMain ? palette::kWhite : palette::kInk);
    text->setTextAlign(graphics::TextAlign::Center);
    scaleText(text, 13, bounds.width - 12);
    const auto light = makeRect(area, 10);
    paint(light, {0x14000000, 0x1CFFFFFF});
    light->setVisible(false);
    button->add(light);
    listeners_.add<events::PointerEvent>(*button, [light](const events::PointerEvent& event) {
        if (event.phase == events::PointerPhase::Enter ||
            event.phase == events::PointerPhase::Leave) {
            light->setVisible(event.phase == events::PointerPhase::Enter);
        }
        return false;
    });
    button->getOrCreateAccessibilityElement()->setRole(AccessibilityRole::Button);
    makePressable(button, pressed);
    addStop(button, area, 10);
    inside.add(button);
}

std::function<void(bool)> Controls::addSwitch(ContainerObject& inside, float x, float y,
                                              const std::string& label,
                                              const std::function<void(bool)>& changed) {
    const auto control = DisplayFactory::createContainer();
    control->setTranslate(x, y);
    const Rect area{0, 0, kSwitchWidth, kSwitchHeight};
    const auto off = makeRect(area, kSwitchHeight / 2);
    paint(off, palette::kFaint);
    control->add(off);
    const auto on = makeRect(area, kSwitchHeight / 2);
    paint(on, palette::kAccent);
    on->setVisible(false);
    control->add(on);
    const auto knob = DisplayFactory::createCircle();
    knob->set(3, 3, kSwitchHeight / 2 - 3);
    paint(knob, palette::kWhite);
    control->add(knob);
    scaleText(addText(*control, kSwitchWidth + 12, 17, label, 13, palette::kInk), 13, 180);
    const auto element = control->getOrCreateAccessibilityElement();
    element->setRole(AccessibilityRole::Switch);
    element->setLabel(label);
    element->setChecked(false);
    makePressable(control, [on, changed] { changed(!on->isVisible()); });
    addStop(control, area, kSwitchHeight / 2);
    inside.add(control);
    return [on, knob, element](bool isOn) {
        on->setVisible(isOn);
        knob->setTranslate(isOn ? kSwitchWidth - kSwitchHeight : 0, 0);
        element->setChecked(isOn);
    };
}

void Controls::addStop(const Container& object, const Rect& bounds, float radius) {
    const auto ring =
        makeRect({bounds.x - 3, bounds.y - 3, bounds.width + 6, bounds.height + 6}, radius + 3);
    outline(ring, palette::kAccent, 2);
    ring->setVisible(false);
    object->add(ring);
    listeners_.add<events::FocusEvent>(
        *object, [ring](const events::FocusEvent& event) { ring->setVisible(event.hasFocus); });
    stops_.push_back(object);
}

void Controls::makePressable(const Container& object, const Action& pressed) {
    object->setCursor(Cursor::Pointer);
    listeners_.add<events::PointerEvent>(
        *object, [weak = std::weak_ptr(object), pressed](const events::PointerEvent& event) {
            const auto held = weak.lock();
            // The release counts, and only here: a press can be taken back.
            if (held && event.phase == events::PointerPhase::Up &&
                held->getFrame().contains(event.location)) {
                pressed();
            }
            return event.button == events::PointerButton::Left;
        });
    listeners_.add<events::KeyEvent>(*object, [pressed](const events::KeyEvent& event) {
        const bool isPress = event.key == "Return" || event.key == "space";
        if (isPress && event.phase == events::KeyPhase::Down) {
            pressed();
        }
        return isPress;
    });
}

bool Controls::focusNext(const events::KeyEvent& event) {
    const auto layer = page_->getLayer();
    if (event.key != "Tab" || event.phase == events::KeyPhase::Up || !layer ||
        !layer->getDisplay()) {
        return false;
    }
    const auto count = static_cast<std::ptrdiff_t>(stops_.size());
    const auto now = std::ranges::find(stops_, Display::instance()->getFocus()) - stops_.begin();
    const std::ptrdiff_t step = (event.modifiers & events::kShift) != 0 ? -1 : 1;
    const std::ptrdiff_t first = step > 0 ? 0 : count - 1;
    const std::ptrdiff_t next = now == count ? first : (now + step + count) % count;
    Display::instance()->setFocus(stops_[static_cast<std::size_t>(next)]);
    return true;
}

}  // namespace gallery
