#pragma once

#include <chrono>
#include <cstdint>

namespace orvane::services {

// How exact a position is to be. A less exact position tells less about the user, and takes less
// energy.
enum class PositionAccuracy : std::uint8_t { Country, City, Neighborhood, Street, Exact };

// What an application asks of GeolocationService, as data.
struct GeolocationRequest {
    // The user may permit less, and positions are then less exact.
    PositionAccuracy accuracy = PositionAccuracy::Exact;
    // No position follows while the device has moved by less than this, in whole meters.
    std::uint32_t distance = 0;
    // Nor sooner than this after the last one.
    std::chrono::seconds interval{0};
    // How long the first position may take. Times are those of the display's clock.
    std::chrono::milliseconds timeout{30'000};
};

}  // namespace orvane::services
