#pragma once

#include <orvane/orvane.h>

// What the board and its dialog are made of.
namespace notes {

using namespace orvane::display;
using Container = std::shared_ptr<graphics::Container>;
using orvane::notification::Listeners;
using Action = std::function<void()>;

// The colors of everything.
struct Palette {
    unsigned paper, column, card, edge, ink, caption, accent;

    static Palette of(const Appearance& appearance) {
        const unsigned accent = appearance.accentColor;
        return appearance.isDark ? Palette{0xFF1B1E22, 0xFF24282E, 0xFF31363E, 0xFF404650,
                                           0xFFECEFF3, 0xFF9AA4B0, accent}
                                 : Palette{0xFFF3F1EC, 0xFFE9E5DC, 0xFFFFFFFF, 0xFFDDD7CA,
                                           0xFF22303C, 0xFF6B7680, accent};
    }
};

inline std::shared_ptr<graphics::Rect> makePanel(double x, double y, double width, double height,
                                                 float radius, unsigned color) {
    auto panel = DisplayFactory::createRect();
    panel->set(float(x), float(y), float(width), float(height));
    panel->setRx(radius);
    panel->setRy(radius);
    panel->setFillColor(color);
    return panel;
}

// One line with its baseline at `y`, or a text that is wrapped at a width, below `y`.
inline std::shared_ptr<graphics::Text> makeText(const std::string& content, double x, double y,
                                                float size, unsigned color, bool isBold = false,
                                                double width = 0) {
    auto text = DisplayFactory::createText(width > 0);
    text->setFont(isBold ? "DejaVu Sans Bold" : "DejaVu Sans");
    text->setTextSize(size);
    text->setFillColor(color);
    if (width > 0) {
        text->setLineBreaks(graphics::LineBreaks::Keep);
        text->setWidth(float(width));
    }
    text->setContent(content);
    text->setX(float(x));
    text->setY(float(y));
    return text;
}

// Shows a ring around an object while it has the focus.
inline void addFocusRing(graphics::Container& object, double width, double height,
                         const Palette& palette, Listeners& listeners) {
    const auto ring = makePanel(-3, -3, width + 6, height + 6, 13, 0);
    ring->setFillColor(0, 0, 0, -1);
    ring->setStrokeColor(palette.accent);
    ring->setStrokeWidth(2);
    ring->setVisible(false);
    object.add(ring);
    listeners.add<events::FocusEvent>(
        object, [ring](const events::FocusEvent& event) { ring->setVisible(event.hasFocus); });
}

// Return, space, the pointer and assistive technology press it.
inline Container makeButton(const std::string& label, double x, double y, double width,
                            const Palette& palette, bool isMain, Listeners& listeners,
                            const Action& pressed) {
    auto button = DisplayFactory::createContainer();
    button->add(makePanel(0, 0, width, 36, 10, isMain ? palette.accent : palette.edge));
    const auto text = makeText(label, width / 2, 23, 14, isMain ? 0xFFFFFFFF : palette.ink, isMain);
    text->setTextAlign(graphics::TextAlign::Center);
    button->add(text);
    button->setTranslate(float(x), float(y));
    button->setCursor(Cursor::Pointer);
    button->getOrCreateAccessibilityElement()->setRole(AccessibilityRole::Button);
    button->getAccessibilityElement()->setLabel(label);
    addFocusRing(*button, width, 36, palette, listeners);
    listeners.add<events::PointerEvent>(*button, [pressed](const events::PointerEvent& event) {
        if (event.phase == events::PointerPhase::Up) {
            pressed();
        }
        return event.button == events::PointerButton::Left;
    });
    listeners.add<events::KeyEvent>(*button, [pressed](const events::KeyEvent& event) {
        const bool isPress = event.key == "Return" || event.key == "space";
        if (isPress && event.phase == events::KeyPhase::Down) {
            pressed();
        }
        return isPress;
    });
    return button;
}

}  // namespace notes
