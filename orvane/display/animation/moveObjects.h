#pragma once

namespace orvane::display::geometry {
struct Matrix;
}  // namespace orvane::display::geometry

namespace orvane::display::animation {

class Animatable;

// Changes the transformations of the objects on a layer so that they are shown where they would be
// if the layer had the transformation `change`, which is in the layer's coordinates. A clip
// container's bounds move with it. Does nothing for a target that is no layer. The module graphics
// defines it.
void moveObjects(Animatable& target, const geometry::Matrix& change);

}  // namespace orvane::display::animation
