#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/notification/Listener.h"
#include "orvane/services/ServiceCall.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::platform {
class NSWebEngine;
class NSWebPage;
}  // namespace orvane::platform

namespace orvane::display::native {

// A page of the web, which the desktop's library (WebKitGTK) loads, shows and runs in processes of
// its own. It occupies the bounds that the application sets, and is as large in them as the scale
// of the object's transformation makes it. DisplayFactory::createWebView creates one.
//
// The first load opens liborvane-web.so. The page loads, and keeps its history, also while it is in
// no window or far from the visible part of one. Where the library or a desktop is missing, or the
// host denies the family "web", every call fails (Unavailable, Denied), and the object shows the
// title and the address.
//
// A page has no power over the application: it reaches only the message handlers that were set. It
// gets no permissions (position, camera, notifications ...), downloads are refused, and it can show
// files only below the folders of the files that the application has loaded; each refusal is one
// line in the log. What pages store is forgotten with the object, unless setPersistent is called.
//
// Events and callbacks come on the main thread, never before the call that causes them has
// returned, and none after the object has been destroyed. What they throw is logged. Main thread
// only.
class ORVANE_EXPORT NWebView : public virtual graphics::SizedObject<DisplayObject>,
                               public virtual NativeObject {
public:
    // One of the properties of the page has changed: title, address, progress, whether it is
    // loading, or whether there is a page before or after it. Several changes may have one event.
    // The title often follows the end of the load.
    struct ChangeEvent {
        using listener_type = notification::Listener<DisplayObject, ChangeEvent, void>;
    };
    // The steps of a load. Each load begins with Started and ends with one of the last three; one
    // that is refused has only Failed.
    enum class LoadPhase {
        Started,
        Committed,  // the new page replaces the old one
        Finished,
        Failed,   // the old page stays
        Stopped,  // by stop(), by another load, or because the answer was a download
    };
    // A step of a load.
    struct LoadEvent {
        using listener_type = notification::Listener<DisplayObject, LoadEvent, void>;

        LoadPhase phase = LoadPhase::Started;
        std::string address = {};
        // Why the load has failed.
        std::optional<services::ServiceFailure> failure = {};
    };
    // The process that ran the page has ended unexpectedly; reload() starts another one.
    struct CrashEvent {
        using listener_type = notification::Listener<DisplayObject, CrashEvent, void>;

        std::string message = {};  // for developers, in English
    };
    // What a page, or the user in it, wants to show next, in any of its frames.
    struct Navigation {
        std::string address = {};
        // It asks for a window of its own.
        bool opensWindow = false;
        // The user has pressed something, as opposed to a script that runs on its own.
        bool isUserGesture = false;
    };
    // What a page has sent.
    struct Message {
        std::string json = {};
        // The address of the page that was shown when the message came. A frame in it can have sent
        // the message.
        std::string address = {};
    };
    // An exception of a script, or what is wrong with its text or its value.
    struct ScriptError {
        std::string message = {};
        // Where WebKit reports it, from 1; 0 if that is not known.
        int line = 0;
        int column = 0;
    };
    // What a script resulted in.
    struct ScriptResult {
        // The value of the last statement as JSON; empty for one that JSON does not have, such as
        // undefined.
        std::string json = {};
        std::optional<ScriptError> error = {};
    };
    // What a call returns; see ServiceCall. It may be dropped.
    using Call = std::shared_ptr<services::ServiceCall>;

    // Applications call DisplayFactory::createWebView.
    NWebView();
    ~NWebView() override;

    // ---- loading ----
    // Loads an address, with its scheme ("https:", "file:" ...). "javascript:" is refused.
    void load(const std::string& address);
    // Shows a text in HTML. Relative addresses in it begin at `base`, which is also its origin; an
    // empty base gives it neither.
    void loadHtml(const std::string& html, const std::string& base = {});
    // Loads a file. A path that is not absolute begins at the working folder.
    void loadFile(const std::string& path);
    // Loads the address again. A text that loadHtml showed is not kept for that.
    void reload();
    // Ends the load that is under way.
    void stop();
    // Shows the page before this one in the history, if there is one.
    void goBack();
    // Shows the page after this one, if there is one.
    void goForward();

    // ---- what is known of the page ----
    // Whether there is a page before this one in the history.
    bool canGoBack() const;
    // Whether there is a page after this one.
    bool canGoForward() const;
    // The address of the page, or of the one that is being loaded.
    std::string getAddress() const;
    // Empty until the page has one.
    std::string getTitle() const;
    // Of the last load, from 0 to 1.
    double getProgress() const;
    // Whether a load is under way.
    bool isLoading() const;

    // ---- scripts and messages ----
    // Runs a script in the page that is shown, with the rights of its own scripts.
    Call runScript(const std::string& script, std::function<void(const ScriptResult& result)> done,
                   services::FailureCallback failed = {});
    // Receives what pages send with window.webkit.messageHandlers.<name>.postMessage(value). An
    // empty function ends that. The name consists of letters, digits and underscores; others are
    // refused. Every page that is shown can send: check the address and the value.
    void setMessageHandler(const std::string& name, std::function<void(const Message&)> handler);

    // ---- what pages may do ----
    // Sets what decides about navigations; true allows one. What would open a window is shown in
    // this object then. Also called for the application's own loads and for redirections. Without a
    // policy, pages may navigate and may not open windows.
    void setNavigationPolicy(std::function<bool(const Navigation& navigation)> policy);
    // Keeps cookies, storage and a cache in the application's caches folder, where all such objects
    // share them. They are in memory at first. Refused, with one line in the log, after the first
    // load.
    void setPersistent(bool persistent);

    // ---- what is shown ----
    // Sets the size of the page's content, from 0.25 to 5 times its own, in addition to the scale
    // of the object; values outside become the nearest one. 1 at first.
    void setZoom(double zoom);
    double getZoom() const;
    // Marks a text in the page, without regard to case, scrolls to the first place, and passes how
    // often it is there. A search that has not been answered is cancelled.
    Call find(const std::string& text, std::function<void(std::size_t count)> found,
              services::FailureCallback failed = {});
    // Scrolls to the next place of the text; after the last one comes the first.
    void findNext();
    // Scrolls to the place before.
    void findPrevious();
    // Removes the marks.
    void endFind();
    // Passes what is visible of the page as the bytes of a PNG file, which Image::setContent takes.
    Call takeSnapshot(std::function<void(const std::string& bytes)> taken,
                      services::FailureCallback failed = {});

    // See NativeObject.
    void init() override;
    std::string getDescription() const override { return "NWebView"; }

    // Called by the layer when the object was placed: the page has the object's scale.
    void updateScale();

protected:
    std::shared_ptr<NativeLayer> createLayer() override;

private:
    class Layer;
    struct State;

    platform::NSWebPage& page() const;
    void wantSize();
    template <typename Event>
    void report(const Event& event);
    Call begin(services::FailureCallback failed,
               const std::function<void(platform::NSWebEngine& engine, const Call& call)>& start);
    void load(const std::string& address, const std::string& fault);

    std::unique_ptr<State> state_;
};

}  // namespace orvane::display::native
