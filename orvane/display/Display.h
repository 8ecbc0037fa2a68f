#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/display/events/FrameChangedEvent.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/notification/Notifier.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display {

class DisplayLayer;
class DisplayObject;
class DisplayView;

namespace animation {
struct Transition;
}

// The root of the world on screen: it owns the top-level objects and the one view that all layers
// live in. Applications add objects to it; each top-level object brings a layer, and the layer's
// view becomes a subview of the root view, the last added on top.
//
// Made at the first instance(), which needs a working main queue. Called on the application's
// thread; the view is touched only through dispatch_ui.
class ORVANE_EXPORT Display : public notification::Notifier<Display>,
                              public virtual commons::virtual_enable_shared_from_this<Display> {
public:
    static std::shared_ptr<Display> instance();
    // Lets go of the instance; the next instance() makes a new one. The old one lives on for
    // whoever holds it.
    static void reset();

    Display();
    ~Display() override;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // The object comes on top. One without a layer of its own gets one.
    void add(const std::shared_ptr<DisplayObject>& object);
    // True when the object was here.
    bool remove(const std::shared_ptr<DisplayObject>& object);
    void removeAll();
    // In order of adding.
    const std::vector<std::shared_ptr<DisplayObject>>& getObjects() const { return objects_; }

    // Adds `newObject`, and takes `oldObject` away: at once, or when the transition has ended. Both
    // are on the display until then. Null stands for no object, or no transition. `oldObject` goes
    // when its transition ends even if it has been added again meanwhile.
    void replace(const std::shared_ptr<DisplayObject>& oldObject,
                 const std::shared_ptr<DisplayObject>& newObject,
                 const animation::Transition* transition);

    // Gives a layer and its sublayers to this display, and shows them; and back.
    void attachLayer(const std::shared_ptr<DisplayLayer>& layer);
    void detachLayer(const std::shared_ptr<DisplayLayer>& layer);

    // The size has changed: the listeners are told. Without an argument, to what the view has.
    void frameChanged(const geometry::Size<double>& size);
    void frameChanged();

    const std::shared_ptr<DisplayView>& getView() const { return view_; }
    // In points; zero while there is no view.
    geometry::Size<double> getScreenSize() const;
    // Pixels a point; 1 while the view is in no window.
    double getScaleFactor() const;

    // Registers the fonts (files named *.ttf) of the folder and those below it. Of files with the
    // same name the first wins, wherever they lie. A font that fails does not keep the others.
    void loadFonts(const std::string& directory);

    // Nothing on this platform; called all the same where others need them.
    void lockEventHandling() {}
    void unlockEventHandling() {}
    void resizeView(const geometry::Size<double>&) {}
    void beginAnimationTransaction(bool) {}
    void commitAnimationTransaction() {}
    void hideKeyboard() {}

private:
    static std::shared_ptr<Display> s_instance;  // defined in runtime/statics.cpp

    void initView();
    void attachLayerHandler(const std::shared_ptr<DisplayLayer>& layer);
    void detachLayerHandler(const std::shared_ptr<DisplayLayer>& layer);

    std::vector<std::shared_ptr<DisplayObject>> objects_;
    std::shared_ptr<DisplayView> view_;
};

// Erases the object from its parent, if that still lives.
ORVANE_EXPORT void DeleteDisplayObject(const std::shared_ptr<DisplayObject>& object);

}  // namespace orvane::display
