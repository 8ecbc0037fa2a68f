#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/ScrollContainer.h"

namespace orvane::display {

namespace graphics {
class AttributedText;
class Circle;
class ClipContainer;
class Container;
class Ellipse;
class Image;
class InputText;
class ListContainer;
class Line;
class Path;
class Polyline;
class Rect;
class SizedContainer;
class Text;
}  // namespace graphics

namespace native {
class NMapControl;
class NVideoCaptureView;
class NWebView;
}  // namespace native

// Creates the objects of an application. Each function returns a new object as a pointer to its
// abstract class, never null. Called on the application's thread.
class ORVANE_EXPORT DisplayFactory {
public:
    // Creates a group of objects.
    static std::shared_ptr<graphics::Container> createContainer();
    // Creates a group on a layer of its own, which clips its children to its bounds and scrolls
    // them.
    static std::shared_ptr<graphics::ScrollContainer> createScrollContainer(
        graphics::ScrollContainer::Type type, bool paging);
    // Creates a list without rows, on a layer of its own.
    static std::shared_ptr<graphics::ListContainer> createListContainer();
    // Creates a group that clips its children to its bounds: a scroll container for both
    // directions, or a group without a layer of its own.
    static std::shared_ptr<graphics::SizedContainer> createClipContainer(bool scrollable);
    // Creates a group that clips its children to its bounds with rounded corners.
    static std::shared_ptr<graphics::ClipContainer> createRoundedClipContainer(double cornerRadius);

    // Creates a rectangle. It has no extent, a black fill and no visible stroke, like all shapes
    // below.
    static std::shared_ptr<graphics::Rect> createRect();
    // Creates a circle.
    static std::shared_ptr<graphics::Circle> createCircle();
    // Creates an ellipse.
    static std::shared_ptr<graphics::Ellipse> createEllipse();
    // Creates a line, whose stroke has no width until one is set.
    static std::shared_ptr<graphics::Line> createLine();
    // Creates a polyline.
    static std::shared_ptr<graphics::Polyline> createPolyline();
    // Creates an outline of lines and curves.
    static std::shared_ptr<graphics::Path> createPath();

    // Creates a text of one line at a point or, with `multiline`, of lines that wrap at a width. A
    // wrapped text shows nothing until setWidth is called.
    static std::shared_ptr<graphics::Text> createText(bool multiline);
    // Creates a text in which each segment keeps its own style.
    static std::shared_ptr<graphics::AttributedText> createAttributedText();
    // Creates a text that the user can edit, on a layer of its own. `secure` hides what is typed; a
    // secure text has one line, also with `multiline`. `maximumLength` is in characters as readers
    // count them; 0 means no limit.
    static std::shared_ptr<graphics::InputText> createInputText(bool multiline, bool secure,
                                                                int maximumLength);
    // Creates an image without a picture.
    static std::shared_ptr<graphics::Image> createImage();
    // Creates a map without tiles, on a layer of its own.
    static std::shared_ptr<native::NMapControl> createMapControl();
    // Creates a view that shows what a camera sees, on a layer of its own. It shows nothing until
    // it gets a session.
    static std::shared_ptr<native::NVideoCaptureView> createVideoCaptureView();
    // Creates a page of the web, on a layer of its own. It is empty, and no library is opened,
    // until something is loaded or a window shows it.
    static std::shared_ptr<native::NWebView> createWebView();

    // Creates a layer of the kind T, which derives from native::NativeLayer, with its view.
    template <typename T>
    static std::shared_ptr<T> createLayer() {
        return createInitialized<T>();
    }

private:
    // The init of native layers and objects needs the shared_ptr that holds them.
    template <typename T, typename... Arguments>
    static std::shared_ptr<T> createInitialized(Arguments... arguments) {
        auto object = std::make_shared<T>(arguments...);
        object->init();
        return object;
    }
};

}  // namespace orvane::display
