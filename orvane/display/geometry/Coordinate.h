#pragma once

namespace orvane::display::geometry {

// A place on the earth, in degrees in WGS 84: north and east are positive.
struct Coordinate {
    double latitude = 0;
    double longitude = 0;

    friend constexpr bool operator==(const Coordinate&, const Coordinate&) = default;
};

}  // namespace orvane::display::geometry
