#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::display {

namespace graphics {
class Circle;
class Container;
class Ellipse;
class Line;
class Path;
class Polyline;
class Rect;
class SizedContainer;
}  // namespace graphics

// How applications make what they draw: each operation gives a new object of the model's class and
// never null. On the application's thread.
class ORVANE_EXPORT DisplayFactory {
public:
    static std::shared_ptr<graphics::Container> createContainer();
    // Clips its children to its bounds. Scrolling by the user is not there yet: a scrollable one
    // clips and stands still.
    static std::shared_ptr<graphics::SizedContainer> createClipContainer(bool scrollable);

    static std::shared_ptr<graphics::Rect> createRect();
    static std::shared_ptr<graphics::Circle> createCircle();
    static std::shared_ptr<graphics::Ellipse> createEllipse();
    static std::shared_ptr<graphics::Line> createLine();
    static std::shared_ptr<graphics::Polyline> createPolyline();
    static std::shared_ptr<graphics::Path> createPath();
};

}  // namespace orvane::display
