#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/web/NSWebEngine.h"

namespace orvane::platform {

class NSWebPage;

// A page in WebKit. It keeps WebKit's view also while no window shows it: loads, scripts and
// snapshots do not need one. Main thread only.
class WebKitEngine final : public NSWebEngine {
public:
    // `page` owns the engine.
    explicit WebKitEngine(NSWebPage& page);
    // Callbacks of calls that are under way are not called any more.
    ~WebKitEngine() override;

    // Borrowed. It has no parent at first.
    WebKitWebView* view() const { return view_; }

    void load(const std::string& address) override;
    void loadHtml(const std::string& html, const std::string& base) override;
    void reload() override;
    void stop() override;
    void goBack() override;
    void goForward() override;
    void run(const std::string& script,
             std::function<void(const NSWebScriptResult& result)> done) override;
    void setMessageHandler(const std::string& name, bool isThere) override;
    void setZoom(double zoom) override;
    void find(const std::string& text, std::function<void(std::size_t count)> done) override;
    void findNext(bool isForward) override;
    void endFind() override;
    void takeSnapshot(
        std::function<void(const std::string& png, const std::string& error)> done) override;

private:
    struct MessageHandler;

    void connect();
    void connectFind();
    void giveSize();
    void stateDidChange();
    void loadDidChange(WebKitLoadEvent event);
    void loadFailed(const char* address, const GError& error);
    void decide(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    bool allows(WebKitNavigationAction* action, bool opensWindow);
    void found(std::size_t count);

    // A call of the page may destroy the engine. What calls it does not go on afterwards.
    NSWebPage& page_;
    WebKitWebView* view_;
    GCancellable* cancellable_ = g_cancellable_new();
    bool hasFailed_ = false;  // the load that is under way
    // A search and each step in it have one answer, in order; answers have no other mark.
    unsigned searchesAsked_ = 0;
    unsigned searchesAnswered_ = 0;
    unsigned awaitedSearch_ = 0;  // whose answer found_ gets
    std::function<void(std::size_t count)> found_;
    std::map<std::string, std::unique_ptr<MessageHandler>> messageHandlers_;
};

}  // namespace orvane::platform
