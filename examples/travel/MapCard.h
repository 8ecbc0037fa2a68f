#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>
#include <vector>

namespace travel {

// The map: where the user is, where the contacts are, and the way to the one that was pressed.
class MapCard {
public:
    MapCard();

    // What belongs onto the page.
    const std::shared_ptr<orvane::display::native::NMapControl>& object() const { return map_; }
    // Moves the mark of the user to a position, and shows it.
    void showPosition(const orvane::services::Position& position);
    // Replaces the contacts on the map.
    void showContacts(const std::vector<orvane::services::Contact>& contacts);

private:
    using Coordinate = orvane::display::geometry::Coordinate;
    using Pointer = std::shared_ptr<orvane::display::DisplayObject>;

    void addButton(const std::string& label, float y, double levels);
    void select(const orvane::services::Contact& contact, const Coordinate& place);

    std::shared_ptr<orvane::display::native::NMapControl> map_ =
        orvane::display::DisplayFactory::createMapControl();
    Pointer user_;
    Pointer label_;  // of the contact that was pressed
    unsigned way_ = 0;
    orvane::notification::Listeners pins_;
    orvane::notification::Listeners buttons_;
};

}  // namespace travel
