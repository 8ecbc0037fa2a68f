#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSAppearance.h"

namespace orvane::platform {

// What a dialog for files offers.
struct NSFilePanel {
    // The names of files that match one of the patterns, such as "*.png".
    struct Filter {
        std::string name;
        std::vector<std::string> patterns;

        friend bool operator==(const Filter&, const Filter&) = default;
    };

    std::string title;   // empty: the desktop's own
    std::string folder;  // where it begins; empty: the desktop decides
    std::string name;    // the suggested name of a file to save
    std::vector<Filter> filters;
    bool choosesFolders = false;
    bool choosesSeveral = false;

    friend bool operator==(const NSFilePanel&, const NSFilePanel&) = default;
};

// A message that the desktop shows outside the window.
struct NSUserNotification {
    std::string tag;  // one with the same tag is replaced; empty: none is
    std::string title;
    std::string text;
};

// The services that a program has from its desktop. There is one object for the process, current():
// at first one in memory (NSScriptedDesktop); the first GTKWindow sets its own.
//
// Each service that answers calls its completion exactly once, on the main thread, and never before
// the call has returned. A service that is not there, for example because no bus or no daemon runs,
// answers with nothing, and the log has one line. Main thread only.
class ORVANE_EXPORT NSDesktop {
public:
    NSDesktop() = default;
    virtual ~NSDesktop();
    NSDesktop(const NSDesktop&) = delete;
    NSDesktop& operator=(const NSDesktop&) = delete;

    // The desktop of the process.
    static NSDesktop& current();
    // Borrowed; null for the one in memory.
    static void setCurrent(NSDesktop* desktop);
    // Whether setCurrent has set one that exists.
    static bool hasCurrent();

    // ---- the clipboard ----
    // Puts a text in UTF-8 there.
    virtual void copyText(const std::string& text) = 0;
    // Puts a picture there: the bytes of a PNG or JPEG file. Returns false if they are no picture.
    virtual bool copyPicture(const std::string& bytes) = 0;
    // Pass what is there to the completion, a picture as the bytes of a file; empty for nothing:
    virtual void pasteText(std::function<void(std::string)> completion) = 0;
    virtual void pastePicture(std::function<void(std::string)> completion) = 0;

    // ---- dialogs and addresses ----
    // Show a dialog. The results are absolute paths, none if the user cancels:
    virtual void runOpenPanel(const NSFilePanel& panel,
                              std::function<void(std::vector<std::string>)> completion) = 0;
    virtual void runSavePanel(const NSFilePanel& panel,
                              std::function<void(std::string)> completion) = 0;

    // Opens an address in the program that the desktop prefers. The result is whether that worked.
    virtual void openURL(const std::string& url, std::function<void(bool)> completion) = 0;

    // Shows a notification. `pressed` is called each time the user presses it.
    virtual void deliver(const NSUserNotification& notification, std::function<void()> pressed) = 0;
    // Takes back what was delivered with a tag.
    virtual void withdraw(const std::string& tag) = 0;

    // Asks the desktop at the first call, and watches it from then on.
    virtual NSAppearance appearance() = 0;
    // Sets the function that is called for an owner when appearance() has changed; an empty one
    // removes it. It stays when another desktop is set.
    static void setAppearanceHandler(const void* owner, std::function<void()> handler);

protected:
    // Must be called by subclasses when appearance() has changed.
    void appearanceDidChange() const;
};

}  // namespace orvane::platform
