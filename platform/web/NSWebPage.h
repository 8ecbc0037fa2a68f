#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "platform/appkit/NSControl.h"
#include "platform/web/NSWebEngine.h"

namespace orvane::platform {

// A page of the web. Everything that must not be lost while the desktop's widget for it is away is
// here: the engine that loads and runs the page, and what the application has set. Where there is
// no engine, the page paints its title and its address.
//
// The engine is created by the first call of engine() that can have one; a page that is in no
// window yet loads, too. Handlers are called on the main thread, may be empty, and may destroy the
// page. Main thread only.
class ORVANE_EXPORT NSWebPage : public NSControl {
public:
    static constexpr std::string_view kKind = "Web";

    // What the owner does about the page.
    struct Handlers {
        std::function<void()> stateChanged;
        // `message` says why a load has failed; for developers.
        std::function<void(NSWebLoadPhase phase, const std::string& address,
                           const std::string& message)>
            loadChanged;
        // A message of the page for one of the handlers that were added, as JSON.
        std::function<void(const std::string& name, const std::string& json)> messageReceived;
        // The process that ran the page has ended unexpectedly.
        std::function<void(const std::string& message)> processEnded;
    };
    using CreateEngine = std::function<std::unique_ptr<NSWebEngine>(NSWebPage& page)>;

    NSWebPage();
    ~NSWebPage() override;

    // Sets what creates engines, which may return null. Called by the desktop's library.
    static void setEngineSource(CreateEngine create);

    std::string_view controlKind() const override { return kKind; }
    void setHandlers(Handlers handlers);
    // The engine. Null where there is none.
    NSWebEngine* engine();

    // ---- what the application sets ----
    // Where the engine keeps cookies, storage and a cache. They are only in memory if the path is
    // empty. Returns false if the engine exists already.
    bool setDataFolder(const std::string& path);
    const std::string& dataFolder() const { return dataFolder_; }
    // Sets how large the page is while the control has no size, in points.
    void setWantedSize(CGSize size) { wantedSize_ = size; }
    // The size of the page: that of the control, or the wanted one, or 800 x 600.
    CGSize pageSize() const;
    // Positive and finite.
    void setZoom(double zoom);
    double zoom() const { return zoom_; }
    // Returns false, with one line in the log, unless the name is one of JavaScript's: letters,
    // digits and underscores.
    bool addMessageHandler(const std::string& name);
    void removeMessageHandler(const std::string& name);
    const std::set<std::string>& messageHandlers() const { return messageHandlers_; }

    // Sets what decides about navigations that are not refused anyway. Without one, pages may
    // navigate and may not open windows. The policy may destroy the page.
    void setPolicy(std::function<bool(const NSWebNavigation& navigation)> policy);

    // Load; return why that is refused, or nothing. Pages may show files only below the folders of
    // the files that were loaded here.
    std::string load(const std::string& address);
    std::string loadHtml(const std::string& html, const std::string& base);

    // The page as far as it is known; of one without an engine, the address.
    const NSWebState& state() const { return state_; }

    // ---- for the engine ----
    void setState(NSWebState state);
    void loadDidChange(NSWebLoadPhase phase, const std::string& address,
                       const std::string& message);
    // Decides about a navigation. What is denied has one line in the log.
    bool allows(const NSWebNavigation& navigation);
    void messageReceived(const std::string& name, const std::string& json);
    void processDidEnd(const std::string& message);

    bool acceptsFirstResponder() const override { return engine_ != nullptr; }
    bool canBecomeKeyView() const override { return engine_ != nullptr; }
    void drawRect(const CGRect& dirty) override;

private:
    void permitFolderOf(const std::string& address);
    // What is known of a page without an engine.
    void setKnown(const std::string& address, const std::string& title);
    bool mayShowFile(const std::string& address) const;

    std::unique_ptr<NSWebEngine> engine_;
    Handlers handlers_;
    std::function<bool(const NSWebNavigation& navigation)> policy_;
    NSWebState state_;
    std::string dataFolder_;
    std::set<std::filesystem::path> fileFolders_;
    CGSize wantedSize_;
    double zoom_ = 1;
    std::set<std::string> messageHandlers_;
};

// Returns the address of a file. A path that is not absolute begins at the working folder.
[[nodiscard]] ORVANE_EXPORT std::string fileAddress(const std::string& path);
// Returns an address for the log: what is too long is cut.
[[nodiscard]] ORVANE_EXPORT std::string shownAddress(const std::string& address);

}  // namespace orvane::platform
