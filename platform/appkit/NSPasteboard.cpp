#include "platform/appkit/NSPasteboard.h"

#include <string_view>

namespace orvane::platform {

NSPasteboard& NSPasteboard::generalPasteboard() {
    static NSPasteboard pasteboard;
    return pasteboard;
}

void NSPasteboard::setString(const std::string& text) {
    text_ = text;
    picture_.clear();
}

bool NSPasteboard::setPicture(const std::string& bytes) {
    const std::string_view start = bytes;
    if (!start.starts_with("\x89PNG\r\n\x1a\n") && !start.starts_with("\xff\xd8\xff")) {
        return false;
    }
    picture_ = bytes;
    text_.clear();
    return true;
}

}  // namespace orvane::platform
