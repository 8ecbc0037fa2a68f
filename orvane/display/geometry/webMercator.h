#pragma once

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Coordinate.h"
#include "orvane/display/geometry/Point.h"

// The projection of maps whose tiles are squares: the spherical Mercator projection on a square
// world (EPSG:3857). The formulas are those of OpenStreetMap's "Slippy map tilenames".
//
// A place in the world has an x from 0 (180 degrees west) to 1 (180 degrees east), and a y from 0
// (the northern edge) to 1 (the southern edge). At the zoom level z the world consists of 2^z tiles
// in each direction.
namespace orvane::display::geometry {

// The latitude of the northern edge, atan(sinh(pi)), in degrees.
constexpr double kWebMercatorEdge = 85.05112877980659;

// Returns the place of a coordinate. A latitude beyond an edge becomes the edge; a longitude beyond
// 180 degrees gives an x outside 0 to 1.
ORVANE_EXPORT Point<double> toWebMercator(const Coordinate& coordinate);
// Returns the coordinate of a place, with a longitude from -180 to 180.
ORVANE_EXPORT Coordinate fromWebMercator(const Point<double>& place);

}  // namespace orvane::display::geometry
