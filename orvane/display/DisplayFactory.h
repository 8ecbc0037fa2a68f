#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::display {

namespace graphics {
class AttributedText;
class Circle;
class Container;
class Ellipse;
class Image;
class Line;
class Path;
class Polyline;
class Rect;
class SizedContainer;
class Text;
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

    // One line at a point, or lines that wrap at a width below a point.
    static std::shared_ptr<graphics::Text> createText(bool multiline);
    // A text whose segments keep their own style.
    static std::shared_ptr<graphics::AttributedText> createAttributedText();
    static std::shared_ptr<graphics::Image> createImage();
};

}  // namespace orvane::display
