#include "platform/offscreen/OffscreenWindowHost.h"

#include "platform/appkit/NSWindow.h"

namespace orvane::platform {

bool OffscreenWindowHost::setTitle(const std::string& title) {
    title_ = title;
    return true;
}

bool OffscreenWindowHost::setIcon(const std::string& picture) {
    icon_ = picture;
    return true;
}

bool OffscreenWindowHost::setApplicationIdentifier(const std::string& identifier) {
    applicationIdentifier_ = identifier;
    return true;
}

bool OffscreenWindowHost::setMinimumSize(CGSize size) {
    minimumSize_ = size;
    return true;
}

bool OffscreenWindowHost::setFullScreen(bool isFullScreen) {
    window_.fullScreenDidChange(isFullScreen);
    return true;
}

bool OffscreenWindowHost::close() {
    isClosed_ = true;
    if (closeHandler_) {
        closeHandler_();
    }
    return true;
}

}  // namespace orvane::platform
