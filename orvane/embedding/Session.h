#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {
class NSView;
class NSWindow;
}  // namespace orvane::platform

namespace orvane::embedding {

class Accessibility;

// Runs application libraries in a window of a host program. The constructor starts the runtime and
// puts the display into the window, start() runs the applications' main(), and the destructor ends
// everything in the order that is free of deadlocks. Between start() and the destructor, the host
// runs a loop over GLib's default main context, such as GTK's.
//
// Create one at a time, on the main thread, and use it on the main thread only. It borrows the
// window, which must live longer.
class ORVANE_EXPORT Session {
public:
    // `applications` is the directory of the application libraries. `resources` is the directory of
    // their resources for this run, also of fonts, which the constructor loads from its folder
    // res/fonts. If `resources` is empty, the user default "Resource Folder" applies; if the user
    // has not set that either, the resources are expected next to the applications.
    //
    // The display has the size of the window's content, and the window tells assistive technology
    // what is on it (Accessibility). Throws std::system_error if the runtime's
    // thread cannot be started.
    Session(platform::NSWindow& window, std::string applications,
            const std::string& resources = {});
    // Cancels the HTTP requests, drains the main queue until the timed tasks have ended, closes the
    // address book, and takes the display out of the window. Does not return before a running timed
    // task does.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Calls main() of every application. Returns false if the directory contains none; the reason
    // is in the log.
    bool start();

    // Tells the display and the applications that the window's content has this size, in points.
    void resize(platform::CGSize size);

private:
    void layOut(platform::CGSize size);

    platform::NSWindow& window_;
    std::string applications_;
    std::shared_ptr<platform::NSView> view_;
    std::unique_ptr<Accessibility> accessibility_;
};

}  // namespace orvane::embedding
