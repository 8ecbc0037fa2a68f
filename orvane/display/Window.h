#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/display/events/WindowEvents.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/notification/Notifier.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::display {

// The window around a display; Display::getWindow returns it. It is the same object all the time,
// also when the display enters another window.
//
// A host may refuse any request, for example because the window belongs to another program or the
// desktop has no such thing. A function that returns false has changed nothing and logs nothing;
// all of them do so while the display is in no window. Listeners of CloseRequestEvent can hold the
// window open. Main thread only.
class ORVANE_EXPORT Window : public notification::Notifier<Window>,
                             public virtual commons::virtual_enable_shared_from_this<Window> {
public:
    Window();
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // Sets the title, in UTF-8.
    bool setTitle(const std::string& title);
    // Sets the icon to a picture: the bytes of a PNG or JPEG file. Refused if they are no picture,
    // with a line in the log, and on Wayland, where the icon comes from the application id.
    bool setIcon(const std::string& picture);
    // Sets the application id: the name of the application's .desktop file without its suffix, for
    // example "org.example.notes". The desktop finds the icon and the name with it, and groups
    // windows by it. Call it in main(): refused when the window is on the screen.
    bool setApplicationId(const std::string& id);
    // Sets the smallest size of the display to which the user can make the window, in points.
    bool setMinimumSize(const geometry::Size<double>& size);
    // Requests that the window fills the screen, or no longer does. A FullScreenChangedEvent
    // follows when the desktop has done it.
    bool setFullScreen(bool isFullScreen);
    // Whether the window fills the screen.
    bool isFullScreen() const;

    // Does what the user does by closing the window: asks the listeners of CloseRequestEvent, and
    // closes the window if none of them holds it. Returns whether it closes.
    bool requestClose();
    // Closes the window without asking, which ends the program in an orderly way when its host is
    // back in its loop. Returns false if the host refuses.
    bool quit();

    // Called by the display when its view enters another window; null for none. The window is
    // borrowed.
    void setNativeWindow(platform::NSWindow* window);

private:
    class Delegate;

    bool mayClose();

    std::unique_ptr<Delegate> delegate_;
    platform::NSWindow* native_ = nullptr;
};

}  // namespace orvane::display
