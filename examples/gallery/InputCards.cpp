#include <algorithm>
#include <string>
#include <vector>

#include "DesktopPage.h"

namespace gallery {

using namespace orvane::display;
using events::PointerButton;
using events::PointerPhase;

namespace {

constexpr Controls::Rect kArea{18, 44, 239, 140};

std::shared_ptr<graphics::Rect> addArea(ContainerObject& inside) {
    const auto area = DisplayFactory::createRect();
    area->set(kArea.x, kArea.y, kArea.width, kArea.height);
    area->setRx(12);
    area->setRy(12);
    paint(area, palette::kPaper);
    inside.add(area);
    return area;
}

std::string nameOf(unsigned modifiers) {
    std::string names;
    for (const auto& [bit, name] :
         {std::pair{events::kControl, "Ctrl+"}, std::pair{events::kAlt, "Alt+"},
          std::pair{events::kShift, "Shift+"}, std::pair{events::kSuper, "Super+"}}) {
        names += (modifiers & bit) != 0 ? name : "";
    }
    return names;
}

}  // namespace

void DesktopPage::drawPointer(ContainerObject& inside) {
    const auto pad = DisplayFactory::createContainer();
    inside.add(pad);
    addArea(*pad);
    pad->setCursor(Cursor::Crosshair);
    const auto ring = DisplayFactory::createCircle();
    outline(ring, palette::kAccent, 3);
    ring->setVisible(false);
    pad->add(ring);
    const auto status = addStatus(inside, 208, "Move here, press, and turn the wheel.");
    // The ring keeps inside the area.
    const auto place = [ring](const geometry::Point<double>& point, float radius) {
        const auto clamped = [](double value, float least, float length) {
            return std::clamp(static_cast<float>(value), least, least + length);
        };
        const float x = clamped(point.x, kArea.x + radius, kArea.width - 2 * radius);
        const float y = clamped(point.y, kArea.y + radius, kArea.height - 2 * radius);
        ring->set(x - radius, y - radius, radius);
    };
    const auto radius = std::make_shared<float>(16.0F);
    const auto inPad = [weak = std::weak_ptr(pad)](const geometry::Point<double>& onScreen) {
        const auto held = weak.lock();
        return held ? held->getFullTransformation().inverse().mapPoint(onScreen) : onScreen;
    };
    controls_.listeners().add<events::PointerEvent>(
        *pad, [ring, status, place, radius, inPad,
               isDown = false](const events::PointerEvent& event) mutable {
            const auto point = inPad(event.location);
            place(point, *radius);
            ring->setVisible(event.phase != PointerPhase::Leave);
            if (event.phase == PointerPhase::Down) {
                const char* const names[] = {"", "Left", "Middle", "Right", "Back", "Forward"};
                status->setContent(nameOf(event.modifiers) + names[static_cast<int>(event.button)] +
                                   ", " + std::to_string(event.clickCount) +
                                   (event.clickCount == 1 ? " click" : " clicks"));
            }
            isDown =
                event.phase == PointerPhase::Down || (isDown && event.phase == PointerPhase::Move);
            ring->setStrokeColor((isDown ? Color{palette::kCoral} : palette::kAccent).now());
            return true;
        });
    controls_.listeners().add<events::ScrollEvent>(
        *pad, [status, place, radius, inPad](const events::ScrollEvent& event) {
            *radius = std::clamp(*radius - static_cast<float>(event.delta.y) / 12, 6.0F, 60.0F);
            place(inPad(event.location), *radius);
            status->setContent(event.isPrecise ? "A touchpad" : "A wheel");
            return true;
        });
}

void DesktopPage::drawCursors(ContainerObject& inside) {
    const std::pair<const char*, Cursor> shapes[] = {{"Pointer", Cursor::Pointer},
                                                     {"Text", Cursor::Text},
                                                     {"Crosshair", Cursor::Crosshair},
                                                     {"Move", Cursor::Move},
                                                     {"Grab", Cursor::Grab},
                                                     {"Grabbing", Cursor::Grabbing},
                                                     {"Forbidden", Cursor::NotAllowed},
                                                     {"Wait", Cursor::Wait},
                                                     {"Sideways", Cursor::ResizeHorizontal},
                                                     {"Up, down", Cursor::ResizeVertical}};
    constexpr float kChipHeight = 28;
    float x = kArea.x;
    float y = 44;
    for (const auto& [name, cursor] : shapes) {
        const float width = (kArea.width - 10) / 2;
        const auto chip = DisplayFactory::createContainer();
        const auto face = DisplayFactory::createRect();
        face->set(x, y, width, kChipHeight);
        face->setRx(8);
        face->setRy(8);
        paint(face, palette::kPaper);
        chip->add(face);
        addText(*chip, x + 12, y + 19, name, 12);
        chip->setCursor(cursor);
        inside.add(chip);
        y += x > kArea.x ? kChipHeight + 8 : 0;
        x = x > kArea.x ? kArea.x : kArea.x + width + 10;
    }
}

void DesktopPage::drawKeys(ContainerObject& inside) {
    const auto board = DisplayFactory::createContainer();
    inside.add(board);
    addArea(*board);
    board->getOrCreateAccessibilityElement()->setLabel("Board of keys");
    const auto key = addText(*board, 30, 74, "Press here, then type", 14);
    const auto dot = DisplayFactory::createCircle();
    dot->set(-10, -10, 10);
    paint(dot, palette::kCoral);
    board->add(dot);
    const auto status = addStatus(inside, 208, "Arrows move it, Ctrl+K puts it back.");
    const auto place = std::make_shared<geometry::Point<float>>();
    const auto move = [dot, place](float x, float y) {
        place->x = std::clamp(x, kArea.x + 16, kArea.x + kArea.width - 16);
        place->y = std::clamp(y, kArea.y + 16, kArea.y + kArea.height - 16);
        dot->setTranslate(place->x, place->y);
    };
    const auto putBack = [move] { move(137.5F, 130); };
    putBack();
    controls_.addStop(board, kArea, 12);
    controls_.listeners().add<events::PointerEvent>(
        *board, [weak = std::weak_ptr(board)](const events::PointerEvent& event) {
            if (event.phase == PointerPhase::Down) {
                Display::instance()->setFocus(weak.lock());
            }
            return event.button == PointerButton::Left;
        });
    controls_.listeners().add<events::KeyEvent>(*board, [key, move,
                                                         place](const events::KeyEvent& event) {
        if (event.key == "Tab" || event.phase == events::KeyPhase::Up) {
            return false;
        }
        key->setContent(nameOf(event.modifiers) + (event.key.empty() ? event.text : event.key));
        const int across = event.key == "Right" ? 1 : event.key == "Left" ? -1 : 0;
        const int down = event.key == "Down" ? 1 : event.key == "Up" ? -1 : 0;
        move(place->x + 12 * static_cast<float>(across), place->y + 12 * static_cast<float>(down));
        return across != down;
    });
    shortcut_ = Display::instance()->addShortcut("Ctrl+K", [putBack, status] {
        putBack();
        status->setContent("The shortcut has put the dot back.");
    });
}

}  // namespace gallery
