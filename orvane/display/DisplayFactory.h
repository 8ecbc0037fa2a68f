#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/ScrollContainer.h"

namespace orvane::display {

namespace graphics {
class AttributedText;
class Circle;
class Container;
class Ellipse;
class Image;
class InputText;
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
    // Clips its children to its bounds; on a layer of its own.
    static std::shared_ptr<graphics::ScrollContainer> createScrollContainer(
        graphics::ScrollContainer::Type type, bool paging);
    // The same: as a scroll container for both directions, or as a plain group without a layer.
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
    // The desktop's text field, on a layer of its own. `maximumLength` in characters, 0 for any.
    static std::shared_ptr<graphics::InputText> createInputText(bool multiline, bool secure,
                                                                int maximumLength);
    static std::shared_ptr<graphics::Image> createImage();
};

}  // namespace orvane::display
