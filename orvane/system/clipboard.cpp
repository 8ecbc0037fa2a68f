#include "orvane/system/clipboard.h"

#include <easylogging++.h>

#include <utility>

#include "orvane/system/guardedCallback.h"
#include "platform/appkit/NSDesktop.h"

namespace orvane::system {

using platform::NSDesktop;

void copyText(const std::string& text) {
    NSDesktop::current().copyText(text);
}

bool copyPicture(const std::string& bytes) {
    const bool isCopied = NSDesktop::current().copyPicture(bytes);
    if (!isCopied) {
        CLOG(ERROR, "default") << "copyPicture: the bytes are neither a PNG nor a JPEG picture";
    }
    return isCopied;
}

void pasteText(std::function<void(const std::string& text)> callback) {
    NSDesktop::current().pasteText(guardedCallback<std::string>(std::move(callback)));
}

void pastePicture(std::function<void(const std::string& bytes)> callback) {
    NSDesktop::current().pastePicture(guardedCallback<std::string>(std::move(callback)));
}

}  // namespace orvane::system
