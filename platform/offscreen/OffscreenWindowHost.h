#pragma once

#include <functional>
#include <string>
#include <utility>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSWindowHost.h"

namespace orvane::platform {

class NSWindow;

// The surroundings of a window in memory: grants every request and remembers it, so that tests see
// what an application has asked for. Main thread only.
class ORVANE_EXPORT OffscreenWindowHost final : public NSWindowHost {
public:
    // The window is borrowed.
    explicit OffscreenWindowHost(NSWindow& window) : window_(window) {}

    bool setTitle(const std::string& title) override;
    bool setIcon(const std::string& picture) override;
    bool setApplicationIdentifier(const std::string& identifier) override;
    bool setMinimumSize(CGSize size) override;
    bool setFullScreen(bool isFullScreen) override;
    bool close() override;

    // Sets the function that is called when the window is closed.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }

    // What was requested last; empty if nothing was:
    const std::string& title() const { return title_; }
    const std::string& icon() const { return icon_; }
    const std::string& applicationIdentifier() const { return applicationIdentifier_; }
    CGSize minimumSize() const { return minimumSize_; }
    // Whether the window has been closed. It keeps showing its content.
    bool isClosed() const { return isClosed_; }

private:
    NSWindow& window_;
    std::function<void()> closeHandler_;
    std::string title_;
    std::string icon_;
    std::string applicationIdentifier_;
    CGSize minimumSize_;
    bool isClosed_ = false;
};

}  // namespace orvane::platform
