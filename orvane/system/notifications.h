#pragma once

#include <functional>
#include <string>

#include "orvane/commons/Export.h"

// Messages that the desktop shows outside the window. The desktop shows them with the name and the
// icon of the application if it knows the application (Window::setApplicationId). Without a desktop
// that shows notifications nothing happens, and the log has one line. Main thread only.
namespace orvane::system {

// Texts are UTF-8, without markup.
struct Notification {
    std::string title = {};
    std::string text = {};
    // A notification replaces the one with the same tag; an empty tag replaces none.
    std::string tag = {};
};

// Shows a notification. `pressed` is called on the main thread each time the user presses it.
ORVANE_EXPORT void showNotification(const Notification& notification,
                                    std::function<void()> pressed = {});
// Takes back the notification with a tag, if it is still shown.
ORVANE_EXPORT void withdrawNotification(const std::string& tag);

}  // namespace orvane::system
