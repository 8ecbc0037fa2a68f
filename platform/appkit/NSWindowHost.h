#pragma once

#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What the program around an NSWindow can do for the content of the window. Implemented by the
// program, or by a class of the platform for a whole window of the desktop (GTKToplevel). Each
// function returns whether the request was granted; the defaults refuse everything. Main thread
// only.
class NSWindowHost {
public:
    virtual ~NSWindowHost() = default;

    // UTF-8.
    virtual bool setTitle(const std::string& /*title*/) { return false; }
    // The bytes of a picture file. Logs one line if they are not a picture.
    virtual bool setIcon(const std::string& /*picture*/) { return false; }
    // The name of the application's .desktop file without its suffix.
    virtual bool setApplicationIdentifier(const std::string& /*identifier*/) { return false; }
    // Of the content, in points.
    virtual bool setMinimumSize(CGSize /*size*/) { return false; }
    // The host calls NSWindow::fullScreenDidChange when it has happened.
    virtual bool setFullScreen(bool /*isFullScreen*/) { return false; }
    // Closes the window without asking the content: see NSWindow::performClose.
    virtual bool close() { return false; }
};

// What the content of a window learns about the window around it. Main thread only.
class NSWindowDelegate {
public:
    virtual ~NSWindowDelegate() = default;

    // The user wants to close the window. Returns whether it may close now.
    virtual bool windowShouldClose() = 0;
    // NSWindow::isFullScreen() changed.
    virtual void windowDidChangeFullScreen() = 0;
};

}  // namespace orvane::platform
