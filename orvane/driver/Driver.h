#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/driver/Failure.h"
#include "orvane/driver/Query.h"
#include "platform/appkit/NSEvent.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::display {
class DisplayObject;
}

namespace orvane::platform {
class CGImage;
class NSScriptedDesktop;
class OffscreenWindow;
class OffscreenWindowHost;
}  // namespace orvane::platform

namespace orvane::driver {

// Runs an application in a test: off-screen, in the test's own process, on a virtual clock. A test
// finds objects by what users see, presses and drags them, advances the time, and compares
// pictures. The same test sees the same frames in each run.
//
// After each action, the work of the main queue has been done and what changed has been painted.
// Time passes in step(), and in actions that take time, one refresh of a display at 60 Hz at a
// time. Timed tasks and requests run on other threads in real time: see waitUntil.
//
// Create one at a time, on the main thread, and use it on the main thread only. The application has
// a user of its own without any files: the XDG folders of the process are in a temporary folder
// until the destructor, which removes it. The application's library stays in the process, so its
// global variables keep their values from test to test.
class Driver {
public:
    using Object = std::shared_ptr<display::DisplayObject>;

    // How the application is shown.
    struct Options {
        platform::CGSize size{800, 600};  // of the window's content, in points
        double scale = 1;                 // pixels per point
        std::string resources = {};       // the folder of the application's files; see Session
    };

    // Starts every application library in a directory. Throws Failure if there is none.
    explicit Driver(const std::string& applications);
    Driver(const std::string& applications, const Options& options);
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    // ---- objects ----
    // Returns the only visible object with these properties. Throws Failure, with a list of all
    // objects, if there is none or more than one.
    Object find(const Query& query) const;
    // Returns all visible objects with these properties, in drawing order.
    std::vector<Object> findAll(const Query& query) const;
    // Returns the center of what can be seen of an object, in points of the window's content.
    // Throws Failure if the object is outside the window.
    platform::CGPoint centerOf(const Object& object) const;

    // ---- pointer ----
    // Press and release the left button at the center of an object, or at a point of the window's
    // content:
    void press(const Object& object) { pressAt(centerOf(object)); }
    void press(const Query& query) { press(find(query)); }
    void pressAt(platform::CGPoint point);
    // Presses the button at the center of an object, moves the pointer by a distance in points, at
    // constant speed, and releases the button.
    void drag(const Object& object, platform::CGPoint by, double seconds = 0.25);
    void drag(const Query& query, platform::CGPoint by, double seconds = 0.25) {
        drag(find(query), by, seconds);
    }
    // Scrolls by a distance in points with the pointer at the center of an object, as fingers on a
    // touchpad do. Positive distances move the content left and up. Returns whether anything
    // scrolled.
    bool scroll(const Object& object, platform::CGPoint by);
    bool scroll(const Query& query, platform::CGPoint by) { return scroll(find(query), by); }

    // ---- keyboard ----
    // Enters a text in UTF-8, as an input method does. Returns whether anything had the keyboard
    // and took it.
    bool type(const std::string& text);
    // Presses and releases a key; see NSEvent for its name and the modifiers.
    bool key(const std::string& name, unsigned modifierFlags = 0);

    // ---- the window and the desktop ----
    // Closes the window as the user does. Returns whether the application let it close. A window
    // that is closed can still be looked at.
    bool closeWindow();
    // What the application has asked of its window: the title, and whether it is closed.
    const platform::OffscreenWindowHost& windowHost() const;
    // The desktop of the application: its clipboard, answers of dialogs, notifications, and the
    // appearance. Its answers reach the application with the next action or step.
    platform::NSScriptedDesktop& desktop();
    // Drags files or a text from another program to the center of an object, and releases them.
    // Returns whether the application took them.
    bool drop(const Object& object, const std::vector<std::string>& files,
              const std::string& text = {});
    bool drop(const Query& query, const std::vector<std::string>& files,
              const std::string& text = {});

    // Sends an event at the current time, for what the functions above do not cover.
    bool send(platform::NSEvent event);

    // ---- time ----
    // Lets time pass, in seconds.
    void step(double seconds);
    // Lets time pass until no animation and no frame loop runs. Throws Failure if one still runs
    // after `most` seconds of virtual time.
    void waitForIdle(double most = 10);
    // Runs the main loop, with the virtual clock in step with real time, until the condition is
    // true: for timed tasks and requests. Throws Failure if it is not after `most` seconds.
    void waitUntil(const std::function<bool()>& condition, double most = 5);
    // The virtual time since the application's start, in seconds.
    double time() const;

    // ---- the window ----
    // The application's window, for what the functions above do not cover.
    platform::OffscreenWindow& window();

    // ---- pictures ----
    // Returns a copy of what the window shows.
    std::shared_ptr<const platform::CGImage> picture() const;
    // Throws Failure if what the window shows is not what is in a PNG file; see comparePictures.
    void expectPicture(const std::string& path, int tolerance = 2) const;

private:
    class User;
    struct State;

    void settle();

    std::unique_ptr<User> user_;
    std::unique_ptr<State> state_;
};

}  // namespace orvane::driver
