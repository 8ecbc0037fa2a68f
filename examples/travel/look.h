#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

// The look that all parts of the page share.
namespace travel {

constexpr unsigned kInk = 0xFF22303C;
constexpr unsigned kCaption = 0xFF6B7680;
constexpr unsigned kPaper = 0xFFF3F1EC;
constexpr unsigned kCard = 0xFFFFFFFF;
constexpr unsigned kAccent = 0xFF2F6F8F;

inline std::shared_ptr<orvane::display::graphics::Text> makeText(const std::string& content,
                                                                 float size, unsigned color,
                                                                 bool isWrapped = false) {
    auto text = orvane::display::DisplayFactory::createText(isWrapped);
    text->setFont("DejaVu Sans");
    text->setTextSize(size);
    text->setFillColor(color);
    text->setContent(content);
    return text;
}

inline std::shared_ptr<orvane::display::graphics::Rect> makeBack(unsigned color, float radius) {
    auto back = orvane::display::DisplayFactory::createRect();
    back->setRx(radius);
    back->setRy(radius);
    back->setFillColor(color);
    return back;
}

// A button that calls a function, for as long as `listeners` exists.
inline std::shared_ptr<orvane::display::layout::Box> makeButton(
    const std::string& label, orvane::notification::Listeners& listeners,
    std::function<void()> press) {
    using namespace orvane::display;
    auto button = std::make_shared<layout::Box>(
        layout::BoxStyle{.justify = layout::Justify::Center, .align = layout::Align::Center});
    button->setBackground(makeBack(kAccent, 10));
    button->add(makeText(label, 14, 0xFFFFFFFF));
    const auto element = button->getContainer()->getOrCreateAccessibilityElement();
    element->setRole(AccessibilityRole::Button);
    element->setLabel(label);
    listeners.add<events::PointerEvent>(
        *button->getContainer(), [press = std::move(press)](const events::PointerEvent& event) {
            if (event.phase == events::PointerPhase::Down) {
                press();
            }
            return event.phase == events::PointerPhase::Down;
        });
    return button;
}

// What the user can do about it; the message is for developers.
inline std::string describeFailure(const orvane::services::ServiceFailure& failure) {
    using orvane::services::ServiceFailure;
    switch (failure.reason) {
        case ServiceFailure::Reason::Denied:
            return "You have not permitted this";
        case ServiceFailure::Reason::Unavailable:
            return "Not available on this computer";
        case ServiceFailure::Reason::TimedOut:
            return "There was no answer";
        case ServiceFailure::Reason::Failed:
            break;
    }
    return "This did not work";
}

}  // namespace travel
