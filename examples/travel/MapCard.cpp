#include "MapCard.h"

#include <cmath>
#include <functional>

#include "look.h"

namespace travel {

using namespace orvane::display;
using namespace orvane::services;
using native::NMapControl;

namespace {

// Where the journey begins, until the user's position is known.
constexpr geometry::Coordinate kHome{18, 12};
constexpr std::size_t kMostPins = 40;
constexpr unsigned kColors[] = {0xFFB5493A, 0xFF7A5CA8, 0xFF2E8B6B, 0xFFB07A1E, 0xFF3B6FB6};

std::shared_ptr<graphics::Circle> makeDisc(float radius, unsigned color) {
    auto disc = DisplayFactory::createCircle();
    disc->set(-radius, -radius, radius);
    disc->setFillColor(color);
    return disc;
}

// An address says where a contact is. This example has no service that knows the place of an
// address: it scatters the contacts around the beginning of the journey.
geometry::Coordinate placeOf(const Contact& contact) {
    const std::size_t hash = std::hash<std::string>{}(contact.name);
    const double angle = static_cast<double>(hash % 360) * 0.017453;
    const double distance = 8 + static_cast<double>(hash / 360 % 26);
    return {kHome.latitude + distance * 0.7 * std::sin(angle),
            kHome.longitude + distance * std::cos(angle)};
}

std::shared_ptr<DisplayObject> makePin(const Contact& contact) {
    const std::size_t number = std::hash<std::string>{}(contact.name) % std::size(kColors);
    auto pin = DisplayFactory::createContainer();
    pin->setShadow({0, 2, 5, 0x60000000});
    pin->add(makeDisc(14, 0xFFFFFFFF));
    pin->add(makeDisc(12, kColors[number]));
    const auto letter = makeText(contact.name.substr(0, 1), 13, 0xFFFFFFFF);
    letter->setX(static_cast<float>(-letter->getTextBounds().width / 2));
    letter->setY(4.5F);
    pin->add(letter);
    return pin;
}

std::shared_ptr<DisplayObject> makeLabel(const std::string& name) {
    auto label = DisplayFactory::createContainer();
    const auto text = makeText(name, 13, kInk);
    const auto width = static_cast<float>(text->getTextBounds().width) + 20;
    const auto back = makeBack(kCard, 8);
    back->set(-width / 2, -52, width, 28);
    label->setShadow({0, 2, 6, 0x50000000});
    label->add(back);
    text->setX(-width / 2 + 10);
    text->setY(-33);
    label->add(text);
    return label;
}

}  // namespace

MapCard::MapCard() {
    map_->getOrCreateAccessibilityElement()->setLabel("Map");
    map_->setTiles({.kind = NMapControl::Tiles::Kind::Folder,
                    .location = TRAVEL_TILES,
                    .attribution = "Map of an imaginary world, drawn by the example",
                    .maximumZoom = 3});
    map_->moveTo(kHome, 2.4, NMapControl::Motion::Immediate);
    addButton("+", 14, 1);
    addButton("\u2212", 54, -1);
    // A press on the map itself closes the label.
    buttons_.add<NMapControl::TapEvent>(*map_, [this](const auto&) {
        map_->removeMarker(label_);
        map_->removePath(way_);
    });
}

// Objects that are no markers stay where they are, in front of the map.
void MapCard::addButton(const std::string& label, float y, double levels) {
    const auto button = DisplayFactory::createContainer();
    const auto back = makeBack(kCard, 8);
    back->set(0, 0, 34, 34);
    const auto text = makeText(label, 20, kInk);
    text->setX(static_cast<float>(17 - text->getTextBounds().width / 2));
    text->setY(24);
    button->add(back);
    button->add(text);
    button->setTranslate(14, y);
    button->setShadow({0, 1, 4, 0x40000000});
    const auto element = button->getOrCreateAccessibilityElement();
    element->setRole(AccessibilityRole::Button);
    element->setLabel(levels > 0 ? "Zoom in" : "Zoom out");
    buttons_.add<events::PointerEvent>(*button, [this, levels](const auto& event) {
        if (event.phase == events::PointerPhase::Down) {
            map_->setZoom(map_->getZoom() + levels, NMapControl::Motion::Animated);
        }
        return event.phase == events::PointerPhase::Down;
    });
    map_->add(button);
}

void MapCard::showPosition(const Position& position) {
    if (!user_) {
        const auto mark = DisplayFactory::createContainer();
        mark->add(makeDisc(22, 0x302F6F8F));
        mark->add(makeDisc(9, 0xFFFFFFFF));
        mark->add(makeDisc(6, kAccent));
        user_ = mark;
    }
    const Coordinate place{position.latitude, position.longitude};
    map_->setMarker(user_, place);
    map_->setCenter(place, NMapControl::Motion::Animated);
}

void MapCard::showContacts(const std::vector<Contact>& contacts) {
    const auto user = map_->getMarker(user_);
    pins_.clear();
    map_->clearMarkers();
    if (user) {
        map_->setMarker(user_, *user);
    }
    map_->removePath(way_);
    std::vector<Coordinate> places;
    for (const Contact& contact : contacts) {
        if (places.size() == kMostPins) {
            break;
        }
        const auto pin = makePin(contact);
        const Coordinate place = placeOf(contact);
        pins_.add<events::PointerEvent>(*pin, [this, contact, place](const auto& event) {
            if (event.phase == events::PointerPhase::Down) {
                select(contact, place);
            }
            return event.phase == events::PointerPhase::Down;
        });
        map_->setMarker(pin, place);
        places.push_back(place);
    }
    if (places.size() > 1) {
        map_->show(places, 60, NMapControl::Motion::Animated);
    }
}

void MapCard::select(const Contact& contact, const Coordinate& place) {
    map_->removeMarker(label_);
    label_ = makeLabel(contact.name);
    map_->setMarker(label_, place);
    map_->removePath(way_);
    way_ = map_->addPath({.coordinates = {map_->getMarker(user_).value_or(kHome), place}});
    map_->setCenter(place, NMapControl::Motion::Animated);
}

}  // namespace travel
