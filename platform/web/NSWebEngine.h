#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// What is known of a page.
struct NSWebState {
    std::string address;
    std::string title;
    double progress = 0;  // of the last load, from 0 to 1
    bool isLoading = false;
    bool canGoBack = false;
    bool canGoForward = false;

    friend bool operator==(const NSWebState&, const NSWebState&) = default;
};

// The steps of a load. Each one begins with Started and ends with one of the last three.
enum class NSWebLoadPhase {
    Started,
    Committed,  // the new page replaces the old one
    Finished,
    Failed,
    Stopped,  // by the application, by another load, or by the policy
};

// What a page, or the user in it, wants to show next.
struct NSWebNavigation {
    std::string address;
    bool opensWindow = false;
    bool isUserGesture = false;
};

// What a script of the application resulted in.
struct NSWebScriptResult {
    std::string json;   // empty for a value that JSON does not have
    std::string error;  // empty if there was none
    // Where the error is, from 1; 0 if that is not known.
    int line = 0;
    int column = 0;
};

// Loads and runs a page. It is that of the desktop's library; the page owns it. What it reports, it
// reports to the page (NSWebPage); only changes of the state may come during a call. Callbacks are
// called once, unless the engine is destroyed before. Main thread only.
class ORVANE_EXPORT NSWebEngine {
public:
    NSWebEngine() = default;
    virtual ~NSWebEngine();
    NSWebEngine(const NSWebEngine&) = delete;
    NSWebEngine& operator=(const NSWebEngine&) = delete;

    virtual void load(const std::string& address) = 0;
    // Relative addresses in the page begin at `base`, which may be empty.
    virtual void loadHtml(const std::string& html, const std::string& base) = 0;
    virtual void reload() = 0;
    virtual void stop() = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;

    virtual void run(const std::string& script,
                     std::function<void(const NSWebScriptResult& result)> done) = 0;
    // Whether the page has a message handler with this name, which is a valid one.
    virtual void setMessageHandler(const std::string& name, bool isThere) = 0;
    virtual void setZoom(double zoom) = 0;
    // Marks what is found, and passes how often the text is there.
    virtual void find(const std::string& text, std::function<void(std::size_t count)> done) = 0;
    virtual void findNext(bool isForward) = 0;
    virtual void endFind() = 0;
    // Passes the bytes of a PNG file with what is visible of the page, or why there is none.
    virtual void takeSnapshot(
        std::function<void(const std::string& png, const std::string& error)> done) = 0;
};

}  // namespace orvane::platform
