#include "Navigation.h"

#include <utility>

#include "Palette.h"
#include "Tap.h"

namespace gallery {

using orvane::display::Display;
using orvane::display::animation::Transition;

namespace {

constexpr double kChangeTime = 0.35;  // seconds

}  // namespace

void Navigation::addPage(const std::string& name, const Container& root,
                         const std::function<void(ContainerObject&)>& drawIcon,
                         const std::function<void()>& shown) {
    pages_.push_back({name, root, drawIcon, shown});
}

void Navigation::start() {
    isStill_ = Look::instance().appearance().reducesMotion;
    Look::instance().followChanges(shared_from_this(),
                                   [](Navigation& held) { held.followMotion(); });
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        drawRail(page);
    }
    Display::instance()->add(pages_[current_].root);
    if (pages_[current_].shown) {
        pages_[current_].shown();
    }
}

void Navigation::show(std::size_t page, Type transition) {
    const auto display = Display::instance();
    // The previous page stays on the display until the change is over.
    if (page == current_ || display->getObjects().size() > 1) {
        return;
    }
    const Transition change{transition, kChangeTime};
    display->replace(pages_[current_].root, pages_[page].root, isStill_ ? nullptr : &change);
    current_ = page;
    if (pages_[page].shown) {
        pages_[page].shown();
    }
}

void Navigation::followMotion() {
    const bool isStill = Look::instance().appearance().reducesMotion;
    if (std::exchange(isStill_, isStill) != isStill && pages_[current_].shown) {
        pages_[current_].shown();
    }
}

void Navigation::drawRail(std::size_t page) {
    constexpr float left = 14;
    constexpr float side = 44;
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        const auto button = DisplayFactory::createContainer();
        button->setTranslate(left, 24 + 56 * static_cast<float>(i));
        if (i == page) {
            const auto mark = DisplayFactory::createRect();
            mark->set(-left, 8, 4, side - 16);
            paint(mark, palette::kAccent);
            button->add(mark);
        }
        const auto face = DisplayFactory::createRect();
        face->set(0, 0, side, side);
        face->setRx(12);
        face->setRy(12);
        paint(face, i == page ? 0x40FFFFFFU : 0x14FFFFFFU);
        button->add(face);
        const auto icon = DisplayFactory::createContainer();
        icon->setTranslate(10, 10);
        button->add(icon);
        pages_[i].drawIcon(*icon);
        const auto element = button->getOrCreateAccessibilityElement();
        element->setRole(orvane::display::AccessibilityRole::Tab);
        element->setLabel(pages_[i].name);
        element->setSelected(i == page);
        const auto tap = std::make_shared<Tap>([weak = weak_from_this(), i] {
            if (const auto self = weak.lock()) {
                self->show(
                    i, i > self->current_ ? Transition::PushFromRight : Transition::PushFromLeft);
            }
        });
        button->addListener<orvane::display::events::TouchEvent>(tap);
        buttons_.push_back(tap);
        pages_[page].root->add(button);
    }
}

}  // namespace gallery
