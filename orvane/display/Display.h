#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/display/Appearance.h"
#include "orvane/display/events/FrameChangedEvent.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/notification/Notifier.h"

namespace orvane::platform {
class NSView;
struct NSEvent;
}  // namespace orvane::platform

namespace orvane::display {

class DisplayLayer;
class DisplayObject;
class DisplayView;
class Window;

namespace animation {
struct Transition;
}

namespace events {
class InputDispatcher;
class Shortcut;
class Shortcuts;
}  // namespace events

// The root of everything on screen. It owns the top-level objects and the one view that contains
// the views of all layers. Applications add objects to it; each top-level object brings a layer,
// whose view becomes a subview of the root view. The last one added is on top. The display's
// background is black.
//
// The first call of instance() creates the display; it needs a working main queue. Its functions
// are called on the application's thread, which is usually the main thread. The view is accessed
// only through dispatch_ui.
class ORVANE_EXPORT Display : public notification::Notifier<Display>,
                              public virtual commons::virtual_enable_shared_from_this<Display> {
public:
    // Returns the display of the process, which the first call creates.
    static std::shared_ptr<Display> instance();
    // Releases the instance; the next instance() creates a new one. The old display lives on while
    // someone holds it.
    static void reset();

    // Whether a display loads the fonts of the resource directory. Fonts belong to the process.
    enum class Fonts { Load, Keep };

    // Creates the root view and, with Load, loads the fonts in res/fonts of the resource directory.
    // Applications call instance() instead. Another display, for another window of the process,
    // keeps the fonts; what says "the display" in other classes refers to instance().
    explicit Display(Fonts fonts = Fonts::Load);
    // Releases the root view on the main thread.
    ~Display() override;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // The window around the display: its title, and whether it may close. Never null.
    const std::shared_ptr<Window>& getWindow() const { return window_; }
    // How the user wants programs to look. Asks the desktop the first time, which can take some
    // milliseconds; from then on, an AppearanceChangedEvent is sent to the display's listeners when
    // something of it changes.
    const Appearance& getAppearance();

    // Adds an object on top of the others. An object without a layer of its own gets one.
    void add(const std::shared_ptr<DisplayObject>& object);
    // Removes an object. Returns whether it was a top-level object.
    bool remove(const std::shared_ptr<DisplayObject>& object);
    // Removes all objects.
    void removeAll();
    // The top-level objects in the order in which they were added.
    const std::vector<std::shared_ptr<DisplayObject>>& getObjects() const { return objects_; }

    // Adds `newObject` and removes `oldObject`: at once without a transition, otherwise when the
    // transition ends. Both are on the display until then. Either object, or the transition, may be
    // null. `oldObject` is removed at the end of its transition even if it has been added again
    // meanwhile.
    void replace(const std::shared_ptr<DisplayObject>& oldObject,
                 const std::shared_ptr<DisplayObject>& newObject,
                 const animation::Transition* transition);

    // Makes a layer and its sublayers part of this display and shows the layer's view.
    void attachLayer(const std::shared_ptr<DisplayLayer>& layer);
    // Removes a layer and its sublayers from this display and hides the layer's view.
    void detachLayer(const std::shared_ptr<DisplayLayer>& layer);

    // Adds the view of a layer to the root view, on top. attachLayer calls it.
    void attachLayerHandler(const std::shared_ptr<DisplayLayer>& layer);
    // Removes the view of a layer from the root view. detachLayer calls it.
    void detachLayerHandler(const std::shared_ptr<DisplayLayer>& layer);

    // Gives the keyboard to an object: its listeners and those of its ancestors get the keys
    // (events::KeyEvent). The object need not be visible. Null gives it to none. The objects
    // concerned get a FocusEvent, and the display's listeners a FocusChangedEvent. A native control
    // can have the focus only while it is on a display in a window, and gets it when the user
    // presses it, too.
    void setFocus(const std::shared_ptr<DisplayObject>& object);
    // The object that has the keyboard; null for none.
    std::shared_ptr<DisplayObject> getFocus() const;
    // Calls `action` on the main thread when a combination of keys such as "Ctrl+Shift+Z" is
    // pressed and no object has handled the key. It does so for as long as the application holds
    // the result; of several shortcuts with the same keys, the last one added is called. Returns
    // null, and logs one line, if the combination cannot be read (events::Shortcut::create).
    [[nodiscard]] std::shared_ptr<events::Shortcut> addShortcut(const std::string& keys,
                                                                std::function<void()> action);

    // Tells the listeners of FrameChangedEvent a new size of the display, in points.
    void frameChanged(const geometry::Size<double>& size);
    // Tells the listeners the current size of the view.
    void frameChanged();

    // Creates the root view. The constructor calls it.
    void initView();
    // The root view. A host puts it into its window.
    const std::shared_ptr<DisplayView>& getView() const { return view_; }
    // The size of the root view, in points; zero while there is no view.
    geometry::Size<double> getScreenSize() const;
    // The number of pixels per point; 1 while the view is in no window.
    double getScaleFactor() const;

    // Registers the fonts (files named *.ttf) in a folder and its subfolders. Of several files with
    // the same name, in any of these folders, only the first is registered. When a font cannot be
    // registered, the log says so and the others are registered all the same.
    void loadFonts(const std::string& directory);

    // Does nothing on this platform.
    void lockEventHandling() {}
    // Does nothing on this platform.
    void unlockEventHandling() {}
    // Does nothing on this platform.
    void resizeView(const geometry::Size<double>&) {}
    // Does nothing on this platform.
    void beginAnimationTransaction(bool) {}
    // Does nothing on this platform.
    void commitAnimationTransaction() {}
    // Does nothing on this platform.
    void hideKeyboard() {}

private:
    bool handleKey(const platform::NSEvent& event);
    void firstResponderChanged();
    void appearanceChanged();
    void focusChanged(const std::shared_ptr<DisplayObject>& object);

    static std::shared_ptr<Display> s_instance;  // defined in runtime/statics.cpp

    std::vector<std::shared_ptr<DisplayObject>> objects_;
    std::shared_ptr<DisplayView> view_;
    std::unique_ptr<events::InputDispatcher> input_;
    std::unique_ptr<events::Shortcuts> shortcuts_;
    std::shared_ptr<Window> window_;
    std::optional<Appearance> appearance_;  // empty until it was asked for
};

// Removes an object from its parent, if it has one.
ORVANE_EXPORT void DeleteDisplayObject(const std::shared_ptr<DisplayObject>& object);

}  // namespace orvane::display
